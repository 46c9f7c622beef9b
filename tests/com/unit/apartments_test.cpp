#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "com/support/apartment.h"
#include "com/support/script_call.h"

namespace kxjob {
namespace {

using testing_support::Apartment;
using testing_support::CallByName;
using testing_support::NewObject;
using testing_support::Number;
using testing_support::Outcome;
using testing_support::Text;

using CanUnloadFunction = HRESULT(WINAPI*)();

HMODULE Server() {
    return GetModuleHandleW(L"kxJob.dll");
}

HRESULT CanUnload() {
    return reinterpret_cast<CanUnloadFunction>(
        reinterpret_cast<void*>(GetProcAddress(Server(), "DllCanUnloadNow")))();
}

/// Reaches the collaborators of the calling thread, and fails there: the state is unknown.
void UseOnce() {
    const ComPointer<IDispatch> helper = NewObject(L"Job_83.JobHelper");
    EXPECT_EQ(CallByName(*helper.Get(), L"IsJobComplete", {Text("?")}).status, DISP_E_EXCEPTION);
}

TEST(Apartments, KeepTheServerLoadedWhileTheyUseIt) {
    const Apartment keepsTheLibraryLoaded;
    const ComPointer<IDispatch> helper = NewObject(L"Job_83.JobHelper");
    EXPECT_EQ(CanUnload(), S_FALSE);
}

TEST(Apartments, LeaveNothingBehind) {
    HMODULE pinned = nullptr;  // Wine may forget to free a library that several threads let go at once
    {
        const Apartment apartment;
        UseOnce();
        ASSERT_NE(GetModuleHandleExW(0, L"kxJob.dll", &pinned), FALSE);
    }
    for (int round = 0; round < 20; ++round) {
        std::vector<std::thread> threads;
        for (int i = 0; i < 5; ++i) {
            threads.emplace_back([] {
                const Apartment apartment;
                UseOnce();
            });
        }
        for (std::thread& thread : threads) thread.join();
    }
    EXPECT_EQ(CanUnload(), S_OK);
    FreeLibrary(pinned);
}

TEST(Apartments, MayEndAndBeginAgainOnOneThread) {
    for (int round = 0; round < 3; ++round) {
        const Apartment apartment;
        UseOnce();
    }
    EXPECT_EQ(Server(), nullptr);
}

TEST(Apartments, UnloadTheServerWhenItsLastUserAsks) {
    const Apartment outlivesTheUser;
    std::thread user([] {
        const Apartment apartment;
        UseOnce();
    });
    user.join();
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(Server(), nullptr);
}

TEST(Apartments, AreNeeded) {
    HRESULT status = S_OK;
    const Apartment elsewhere;
    const ComPointer<IDispatch> helper = NewObject(L"Job_83.JobHelper");
    std::thread outsider([&] { status = CallByName(*helper.Get(), L"Version", {}).number; });
    outsider.join();
    EXPECT_EQ(status, CO_E_NOTINITIALIZED);
}

/// Runs the calls of other apartments into this one until `done`.
void ServeUntil(HANDLE done) {
    while (MsgWaitForMultipleObjects(1, &done, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
}

TEST(Apartments, CallOneAnotherThroughTheTypeLibrary) {
    const Apartment apartment;
    const ComPointer<IDispatch> helper = NewObject(L"Job_83.JobHelper");
    IStream* stream = nullptr;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, helper.Get(), &stream), S_OK);
    const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::string version;
    Outcome failure;
    std::thread other([&] {
        const Apartment own;
        ComPointer<IDispatch> proxy;
        CoGetInterfaceAndReleaseStream(stream, IID_IDispatch, proxy.Receive());
        EXPECT_NE(proxy.Get(), helper.Get());
        version = TextOf(CallByName(*proxy.Get(), L"Version", {}).result->bstrVal);
        failure = CallByName(*proxy.Get(), L"IsJobRunning", {Text("?")});
        proxy = {};
        SetEvent(done);
    });
    ServeUntil(done);
    other.join();
    CloseHandle(done);
    EXPECT_EQ(version, "8.3.1202.0");
    EXPECT_EQ(failure.number, static_cast<HRESULT>(0x80040000U + 744));
    EXPECT_EQ(failure.source, "Job_83.JobHelper.IsJobRunning");
    EXPECT_EQ(failure.description, "The Job StateID '?' is not known");
}

TEST(ClassObjects, ExistForTheThreeClassesOnly) {
    const Apartment apartment;
    const ComPointer<IDispatch> keepsTheLibraryLoaded = NewObject(L"Job_83.JobHelper");
    using GetClassObjectFunction = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto getClassObject = reinterpret_cast<GetClassObjectFunction>(
        reinterpret_cast<void*>(GetProcAddress(Server(), "DllGetClassObject")));
    ComPointer<IClassFactory> factory;
    EXPECT_EQ(getClassObject(CLSID_NULL, IID_IClassFactory, factory.Receive()), CLASS_E_CLASSNOTAVAILABLE);
    for (const wchar_t* progId : {L"Job_83.JobHelper", L"Job_83.DurationTimer", L"Job_83.Enums"}) {
        CLSID clsid{};
        ASSERT_EQ(CLSIDFromProgID(progId, &clsid), S_OK);
        EXPECT_EQ(getClassObject(clsid, IID_IClassFactory, nullptr), E_POINTER);
        ASSERT_EQ(getClassObject(clsid, IID_IClassFactory, factory.Receive()), S_OK);
        ComPointer<IUnknown> object;
        EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, object.Receive()),
                  CLASS_E_NOAGGREGATION);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, object.Receive()), E_NOINTERFACE);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.Receive()), S_OK);
    }
}

}  // namespace
}  // namespace kxjob
