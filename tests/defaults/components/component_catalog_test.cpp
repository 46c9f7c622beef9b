#include "defaults/components/component_catalog.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "defaults/components/registry_object_factory.h"
#include "defaults/components/registry_platform.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/component_registry.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing_support::ErrorOf;

class Named : public Component {
public:
    explicit Named(std::string name) : name_(std::move(name)) {}
    std::string Name() const override { return name_; }

private:
    std::string name_;
};

ComponentCatalog::Creator CreatorOf(const std::string& name) {
    return [name] { return std::make_shared<Named>(name); };
}

/// Registers a component for as long as it lives.
class Registration {
public:
    Registration(std::string progId, ComponentCatalog::Creator create) : progId_(std::move(progId)) {
        RegisterComponent(progId_, std::move(create));
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { UnregisterComponent(progId_); }

private:
    std::string progId_;
};

std::shared_ptr<ComponentCatalog> CatalogOf(const std::string& configuration) {
    return std::make_shared<ComponentCatalog>(DefaultSettings(ConfigurationDocument(configuration)));
}

TEST(ComponentCatalog, CreatesStandInsInAnyLetterCase) {
    const auto catalog = CatalogOf("");
    catalog->AddStandIn("Shop_83.Import", CreatorOf("stand-in"));
    EXPECT_EQ(catalog->Create("Shop_83.Import")->Name(), "stand-in");
    EXPECT_EQ(catalog->Create("SHOP_83.import")->Name(), "stand-in");
    EXPECT_NE(catalog->Create("Shop_83.Import"), catalog->Create("Shop_83.Import"));
}

TEST(ComponentCatalog, PrefersTheProcessThenTheConfigurationThenTheStandIns) {
    const auto catalog = CatalogOf("component.Shop_83.Import.command = /bin/cat\n");
    catalog->AddStandIn("Shop_83.Import", CreatorOf("stand-in"));
    EXPECT_EQ(catalog->Create("shop_83.import")->Name(),
              "shop_83.import");  // the command goes by what it is asked as
    {
        const Registration registration("SHOP_83.Import", CreatorOf("registered"));
        EXPECT_EQ(catalog->Create("Shop_83.Import")->Name(), "registered");
    }
    EXPECT_EQ(catalog->Create("Shop_83.Import")->Name(), "Shop_83.Import");
    const auto withoutConfiguration = CatalogOf("");
    withoutConfiguration->AddStandIn("Shop_83.Import", CreatorOf("stand-in"));
    EXPECT_EQ(withoutConfiguration->Create("Shop_83.Import")->Name(), "stand-in");
}

TEST(ComponentCatalog, NamesTheClassThatIsNotRegistered) {
    const AutomationError error = ErrorOf([] { CatalogOf("")->Create("Shop_83.Import"); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800401F3U));
    EXPECT_EQ(error.Description(), "Class not registered: Shop_83.Import");
}

TEST(ComponentCatalog, TakesACreatorThatGivesNoneAsNotRegistered) {
    const auto catalog = CatalogOf("");
    catalog->AddStandIn("Shop_83.Import", [] { return ComponentRef(); });
    EXPECT_EQ(ErrorOf([&] { catalog->Create("Shop_83.Import"); }).Number(),
              error_number::kClassNotRegistered);
    const Registration registration("Shop_83.Export", [] { return ComponentRef(); });
    EXPECT_EQ(ErrorOf([&] { catalog->Create("Shop_83.Export"); }).Number(),
              error_number::kClassNotRegistered);
}

TEST(ComponentCatalog, ALaterRegistrationReplacesTheEarlierOne) {
    const Registration earlier("Shop_83.Import", CreatorOf("earlier"));
    const Registration later("SHOP_83.IMPORT", CreatorOf("later"));
    EXPECT_EQ(CatalogOf("")->Create("Shop_83.Import")->Name(), "later");
}

TEST(ComponentRegistry, ForgettingWhatIsNotThereIsNoError) {
    EXPECT_NO_THROW(UnregisterComponent("Shop_83.Never"));
}

TEST(ComponentRegistry, ServesManyThreadsAtOnce) {
    const Registration shared("Shop_83.Shared", CreatorOf("shared"));
    std::atomic<int> created = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&created, t] {
            const auto catalog = CatalogOf("");
            const std::string own = "Shop_83.Own" + std::to_string(t);
            for (int i = 0; i < 100; ++i) {
                const Registration registration(own, CreatorOf(own));
                if (catalog->Create(own)->Name() == own &&
                    catalog->Create("Shop_83.Shared")->Name() == "shared") {
                    ++created;
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(created, 400);
}

TEST(RegistryObjectFactory, PutsTheVersionTagIntoTheTemplate) {
    const auto catalog = CatalogOf("");
    catalog->AddStandIn("Shop_83.Import", CreatorOf("83"));
    catalog->AddStandIn("Shop_90.Import", CreatorOf("90"));
    catalog->AddStandIn("83.83", CreatorOf("twice"));
    RegistryObjectFactory factory(catalog);
    EXPECT_EQ(factory.CreateVersioned("Shop_%v.Import")->Name(), "83");
    EXPECT_EQ(factory.CreateVersioned("Shop_90.Import")->Name(), "90");
    EXPECT_EQ(factory.CreateVersioned("%v.%v")->Name(), "twice");
    EXPECT_THAT(ErrorOf([&] { factory.CreateVersioned("Shop_%v.Export"); }).Description(),
                HasSubstr("Shop_83.Export"));
}

TEST(RegistryObjectFactory, TakesTheVersionTagFromTheConfiguration) {
    const auto catalog = CatalogOf("component.version = 90\n");
    catalog->AddStandIn("Shop_90.Import", CreatorOf("90"));
    EXPECT_EQ(RegistryObjectFactory(catalog).CreateVersioned("Shop_%v.Import")->Name(), "90");
}

TEST(RegistryObjectFactory, FindsOutWhetherAComponentCanBeCreated) {
    const auto catalog = CatalogOf("");
    int alive = 0;
    catalog->AddStandIn("Shop_83.Import", [&alive] {
        ++alive;
        return ComponentRef(new Named("import"), [&alive](const Component* component) {
            --alive;
            delete component;
        });
    });
    catalog->AddStandIn("Shop_83.None", [] { return ComponentRef(); });
    catalog->AddStandIn("Shop_83.Broken",
                        []() -> ComponentRef { throw AutomationError(1, "Shop", "broken"); });
    RegistryObjectFactory factory(catalog);
    EXPECT_TRUE(factory.CanCreate("Shop_83.Import"));
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(factory.CanCreate("Shop_83.Export"));
    EXPECT_FALSE(factory.CanCreate("Shop_83.None"));
    EXPECT_FALSE(factory.CanCreate("Shop_83.Broken"));
    EXPECT_FALSE(factory.CanCreate("Shop_%v.Import"));  // only complete ProgIDs
    EXPECT_FALSE(factory.CanCreate(""));
}

TEST(RegistryObjectFactory, HandsOnWhatACreatorRaises) {
    const auto catalog = CatalogOf("");
    catalog->AddStandIn("Shop_83.Broken",
                        []() -> ComponentRef { throw AutomationError(1, "Shop", "broken"); });
    EXPECT_EQ(
        ErrorOf([&] { RegistryObjectFactory(catalog).CreateVersioned("Shop_%v.Broken"); }).Description(),
        "broken");
}

TEST(RegistryPlatform, CreatesByTheCompleteProgId) {
    const auto catalog = CatalogOf("");
    catalog->AddStandIn("Shop_83.Import", CreatorOf("import"));
    RegistryPlatform platform(catalog);
    EXPECT_EQ(platform.CreateObject("Shop_83.Import")->Name(), "import");
    EXPECT_EQ(ErrorOf([&] { platform.CreateObject("Shop_%v.Import"); }).Number(),
              error_number::kClassNotRegistered);
}

}  // namespace
}  // namespace kxjob
