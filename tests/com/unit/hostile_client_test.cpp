#include <gtest/gtest.h>
#include <kxJob.h>

#include <random>
#include <vector>

#include "com/handles/variant.h"
#include "com/support/apartment.h"
#include "com/support/heap.h"
#include "com/support/script_call.h"

namespace kxjob {
namespace {

using testing_support::Apartment;
using testing_support::BytesInUse;
using testing_support::CallByName;
using testing_support::NewObject;

class HostileClient : public testing::Test {
protected:
    Apartment apartment_;
    ComPointer<IDispatch> helper_ = NewObject(L"Job_83.JobHelper");
    ComPointer<_JobHelper> early_ = ComPointer<_JobHelper>::From(helper_.Get());
};

TEST_F(HostileClient, GetsAPointerErrorForAResultThatCannotBeGiven) {
    EXPECT_EQ(early_->Version(nullptr), E_POINTER);
    EXPECT_EQ(early_->IsJobComplete(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(early_->GetJob(nullptr, dspSqlite, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
              E_POINTER);
    EXPECT_EQ(early_->JobTableCreationScript(nullptr, dspSqlite, nullptr, nullptr), E_POINTER);
    BSTR text = nullptr;
    EXPECT_EQ(early_->JobTableCreationScript(nullptr, dspSqlite, nullptr, &text), E_POINTER);
    double rank = 0;
    EXPECT_EQ(early_->GetNextJob(nullptr, dspSqlite, nullptr, nullptr, &rank), E_POINTER);
    EXPECT_EQ(early_->GetNextJob(nullptr, dspSqlite, nullptr, &text, nullptr), E_POINTER);
}

TEST_F(HostileClient, MayGiveNullForAnyText) {
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(early_->IsJobComplete(nullptr, &result), static_cast<HRESULT>(0x80040000U + 743));
    EXPECT_EQ(result, VARIANT_FALSE) << "a result is cleared before the work";
    Bstr connection(std::string_view("Driver=None"));
    Bstr qualifier(std::string_view("q_"));
    VARIANT rows;
    const HRESULT noStore = static_cast<HRESULT>(0x80040000U + 704);
    EXPECT_EQ(early_->GetJob(connection.Get(), dspSqlite, qualifier.Get(), nullptr, nullptr, nullptr, nullptr,
                             &rows),
              noStore);
    EXPECT_EQ(rows.vt, VT_EMPTY);
}

TEST_F(HostileClient, IsToldThatItsArgumentListIsUnsound) {
    DISPID id = 0;
    wchar_t name[] = L"IsJobComplete";
    wchar_t* names = name;
    ASSERT_EQ(helper_->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
    const auto invoke = [&](DISPPARAMS* parameters) {
        return helper_->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr, nullptr);
    };
    EXPECT_EQ(invoke(nullptr), E_INVALIDARG);
    DISPPARAMS hollow{nullptr, nullptr, 1, 0};
    EXPECT_EQ(invoke(&hollow), E_INVALIDARG);
    VARIANT argument = testing_support::Text("COMPLETE");
    DISPPARAMS nameless{&argument, nullptr, 1, 1};
    EXPECT_EQ(invoke(&nameless), E_INVALIDARG);
    DISPID argumentName = 0;
    DISPPARAMS moreNamesThanArguments{&argument, &argumentName, 1, 2};
    EXPECT_EQ(invoke(&moreNamesThanArguments), E_INVALIDARG);
    argumentName = -99;
    DISPPARAMS oddName{&argument, &argumentName, 1, 1};
    EXPECT_EQ(invoke(&oddName), DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(helper_->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_POINTER);
    EXPECT_EQ(helper_->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(helper_->GetTypeInfo(0, 0, nullptr), E_POINTER);
    ITypeInfo* info = nullptr;
    EXPECT_EQ(helper_->GetTypeInfo(1, 0, &info), DISP_E_BADINDEX);
    EXPECT_EQ(helper_->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

/// Argument lists as no client should make them. What the variants point to is alive and of the right type.
class RandomCalls {
public:
    explicit RandomCalls(unsigned seed) : random_(seed) {}

    DISPPARAMS Next() {
        Free();
        arguments_.resize(random_() % 11);
        for (VARIANT& argument : arguments_) argument = NextValue(2);
        names_.resize(random_() % 4 == 0 ? random_() % (arguments_.size() + 1) : 0);
        for (DISPID& name : names_) name = static_cast<DISPID>(random_() % 12) - 3;
        return {arguments_.data(), names_.data(), static_cast<UINT>(arguments_.size()),
                static_cast<UINT>(names_.size())};
    }
    unsigned Number() { return random_(); }
    ~RandomCalls() { Free(); }

private:
    VARIANT NextValue(int depth) {
        VARIANT value{};
        switch (random_() % 14) {
            case 0: value.vt = VT_EMPTY; break;
            case 1: value.vt = VT_NULL; break;
            case 2: value = testing_support::Number(static_cast<LONG>(random_())); break;
            case 3: value = testing_support::Real(1e9 * static_cast<double>(random_())); break;
            case 4: value = testing_support::Boolean(random_() % 2 == 0); break;
            case 5: value = testing_support::Missing(); break;
            case 6: value.vt = VT_DISPATCH; break;
            case 7: value.vt = VT_BYREF | VT_VARIANT; break;  // null
            case 8:
                value.vt = VT_BYREF | VT_BSTR;
                value.pbstrVal = &text_;
                break;
            case 9:
                value.vt = VT_BYREF | VT_R8;
                value.pdblVal = &real_;
                break;
            case 10: value.vt = VT_ARRAY | VT_VARIANT; break;  // null
            case 11:
                value.vt = static_cast<VARTYPE>(VT_BYREF | (random_() % 40));
                if (value.vt == (VT_BYREF | VT_VARIANT)) value.vt = VT_BYREF | VT_I4;
                break;  // null behind a reference
            case 12:
                if (depth > 0) {
                    variables_.push_back(NextValue(0));
                    value.vt = VT_BYREF | VT_VARIANT;
                    value.pvarVal = &variables_.back();
                    break;
                }
                [[fallthrough]];
            default: value = testing_support::Text(random_() % 2 == 0 ? "COMPLETE" : "it's {42}"); break;
        }
        return value;
    }

    void Free() {
        for (VARIANT& argument : arguments_) Drop(argument);
        for (VARIANT& variable : variables_) Drop(variable);
        arguments_.clear();
        variables_.clear();
        variables_.reserve(64);
    }
    static void Drop(VARIANT& value) {
        if (value.vt == VT_BSTR) VariantClear(&value);
    }

    std::mt19937 random_;
    std::vector<VARIANT> arguments_;
    std::vector<VARIANT> variables_;
    std::vector<DISPID> names_;
    BSTR text_ = nullptr;
    double real_ = 0;
};

/// While it lives, the servers read this configuration.
class Configuration {
public:
    explicit Configuration(std::string_view text) : path_(MAX_PATH, L'\0') {
        path_.resize(GetTempPathW(MAX_PATH, path_.data()));
        path_ += L"hostile_client_test.conf";
        const HANDLE file = CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        CloseHandle(file);
        SetEnvironmentVariableW(L"KXJOB_CONFIG", path_.c_str());
    }
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;
    ~Configuration() {
        SetEnvironmentVariableW(L"KXJOB_CONFIG", nullptr);
        DeleteFileW(path_.c_str());
    }

private:
    std::wstring path_;
};

/// No random call gets as far as a store: there is none in its arguments, nor in the configuration.
TEST_F(HostileClient, DoesNotBringTheServerDownWithRandomCalls) {
    const Configuration quiet("log.level = 0\n");
    RandomCalls calls(20261121);
    long refused = 0;
    constexpr long kCalls = 200000;
    for (long i = 0; i < kCalls; ++i) {
        DISPPARAMS parameters = calls.Next();
        const auto member = static_cast<DISPID>(calls.Number() % 37);
        const auto kind = static_cast<WORD>(1U << (calls.Number() % 4));
        Variant result;
        EXCEPINFO exception{};
        UINT bad = 0;
        const HRESULT status =
            helper_->Invoke(member, IID_NULL, 0, kind, &parameters, &*result, &exception, &bad);
        if (FAILED(status)) ++refused;
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrHelpFile);
    }
    EXPECT_GT(refused, kCalls / 2);
    EXPECT_EQ(CallByName(*helper_.Get(), L"Version", {}).status, S_OK) << "and it still works";
}

TEST_F(HostileClient, CannotMakeTheServerGrowWithAMillionCalls) {
    const Configuration quiet("log.level = 0\n");
    const auto callSome = [&](int count) {
        DISPID ids[] = {2, 4};  // IsJobComplete, which fails, and ParametersTagName
        Bstr unknown(std::string_view("?"));
        VARIANT argument{};
        argument.vt = VT_BSTR;
        argument.bstrVal = unknown.Get();
        for (int i = 0; i < count; ++i) {
            const UINT given = i % 100 == 0 ? 1 : 0;  // every hundredth call is an error
            DISPPARAMS parameters{&argument, nullptr, given, 0};
            Variant result;
            EXCEPINFO exception{};
            helper_->Invoke(given == 1 ? ids[0] : ids[1], IID_NULL, 0, DISPATCH_METHOD, &parameters, &*result,
                            &exception, nullptr);
            SysFreeString(exception.bstrSource);
            SysFreeString(exception.bstrDescription);
        }
    };
    callSome(20000);
    const std::size_t before = BytesInUse();
    callSome(1000000);
    const std::size_t after = BytesInUse();
    EXPECT_LE(after, before + 4096) << "what a million calls may leave in caches of the system";
}

}  // namespace
}  // namespace kxjob
