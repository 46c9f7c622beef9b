#include "defaults/components/library_component.h"

#include <gmock/gmock.h>

#include <fstream>

#include "defaults/components/component_catalog.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing_support::ErrorOf;

// KXJOB_ECHO_COMPONENT is the path of the test library, which the build knows.
constexpr const char* kLibrary = KXJOB_ECHO_COMPONENT;

TEST(LibraryComponent, WorksLikeAnyOther) {
    const ComponentRef echo = CreateFromLibrary("Echo_83.Echo", kLibrary);
    ASSERT_NE(echo, nullptr);
    EXPECT_EQ(echo->Name(), "Echo_83.Echo");
    const Value arguments[] = {"text"};
    EXPECT_EQ(echo->Call("Echo", arguments), Value("text"));
}

TEST(LibraryComponent, IsANewObjectEachTime) {
    EXPECT_NE(CreateFromLibrary("Echo_83.Echo", kLibrary), CreateFromLibrary("Echo_83.Echo", kLibrary));
}

TEST(LibraryComponent, RaisesErrorsThatItsCallerCatches) {
    const ComponentRef echo = CreateFromLibrary("Echo_83.Echo", kLibrary);
    EXPECT_EQ(ErrorOf([&] { echo->Call("Fail", {}); }).Number(), 77);
    EXPECT_EQ(ErrorOf([&] { echo->Call("Other", {}); }).Number(), error_number::kUnknownMember);
}

TEST(LibraryComponent, IsNoneForAClassThatTheLibraryDoesNotHave) {
    EXPECT_EQ(CreateFromLibrary("Echo_83.Other", kLibrary), nullptr);
}

TEST(LibraryComponent, IsNotRegisteredWithoutItsLibrary) {
    const AutomationError error = ErrorOf([] { CreateFromLibrary("Echo_83.Echo", "/no/such/library.so"); });
    EXPECT_EQ(error.Number(), error_number::kClassNotRegistered);
    EXPECT_THAT(error.Description(), HasSubstr("Echo_83.Echo"));
    EXPECT_THAT(error.Description(), HasSubstr("/no/such/library.so"));
}

TEST(LibraryComponent, IsNotRegisteredWhenTheLibraryLacksItsFunction) {
    const AutomationError error = ErrorOf([] { CreateFromLibrary("Echo_83.Echo", "libm.so.6"); });
    EXPECT_EQ(error.Number(), error_number::kClassNotRegistered);
    EXPECT_THAT(error.Description(), HasSubstr("kxjob_create_component"));
}

TEST(LibraryComponent, IsFoundThroughTheConfiguration) {
    const ComponentCatalog catalog(
        DefaultSettings(ConfigurationDocument(std::string("component.Echo_83.Echo.library = ") + kLibrary +
                                              "\ncomponent.Echo_83.Other.library = " + kLibrary)));
    EXPECT_EQ(catalog.Create("Echo_83.Echo")->Name(), "Echo_83.Echo");
    EXPECT_EQ(ErrorOf([&] { catalog.Create("Echo_83.Other"); }).Number(), error_number::kClassNotRegistered);
}

}  // namespace
}  // namespace kxjob
