#include "com/errors/error_info.h"

#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"

namespace kxjob {
namespace {

constexpr std::uint32_t kRuntimeErrorBase = 0x800A0000U;

ComPointer<IErrorInfo> TakeErrorObject() noexcept {
    ComPointer<IErrorInfo> error;
    GetErrorInfo(0, error.ReceiveTyped());
    return error;
}

std::string SystemWords(HRESULT status) {
    wchar_t* words = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
        static_cast<DWORD>(status), 0, reinterpret_cast<wchar_t*>(&words), 0, nullptr);
    std::string text = ToUtf8(std::wstring_view(words, length));
    LocalFree(words);
    text.erase(text.find_last_not_of("\r\n ") + 1);
    return text.empty() ? "Automation error" : text;
}

}  // namespace

HRESULT FailedStatus(std::int32_t number) noexcept {
    if (FAILED(number)) return number;
    if (number == 0) return E_FAIL;
    return static_cast<HRESULT>(kRuntimeErrorBase | (static_cast<std::uint32_t>(number) & 0xFFFFU));
}

AutomationError ErrorOf(HRESULT status) {
    const ComPointer<IErrorInfo> error = TakeErrorObject();
    Bstr source;
    Bstr description;
    if (error) {
        error->GetSource(source.Receive());
        error->GetDescription(description.Receive());
    }
    std::string words = TextOf(description.Get());
    if (words.empty()) words = SystemWords(status);
    return {status, TextOf(source.Get()), std::move(words)};
}

AutomationError ErrorOf(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
    const Bstr source(exception.bstrSource);
    const Bstr description(exception.bstrDescription);
    const Bstr helpFile(exception.bstrHelpFile);
    exception.bstrSource = exception.bstrDescription = exception.bstrHelpFile = nullptr;
    const HRESULT number =
        exception.wCode != 0 ? FailedStatus(exception.wCode) : FailedStatus(exception.scode);
    std::string words = TextOf(description.Get());
    if (words.empty()) words = SystemWords(number);
    return {number, TextOf(source.Get()), std::move(words)};
}

void FillException(HRESULT status, EXCEPINFO* exception) noexcept {
    const ComPointer<IErrorInfo> error = TakeErrorObject();
    if (exception == nullptr) return;
    *exception = EXCEPINFO{};
    exception->scode = status;
    if (!error) return;
    error->GetSource(&exception->bstrSource);
    error->GetDescription(&exception->bstrDescription);
    error->GetHelpFile(&exception->bstrHelpFile);
    error->GetHelpContext(&exception->dwHelpContext);
}

HRESULT Publish(REFIID iid, const AutomationError& error) noexcept {
    const HRESULT status = FailedStatus(error.Number());
    try {
        ComPointer<ICreateErrorInfo> making;
        if (FAILED(CreateErrorInfo(making.ReceiveTyped()))) return status;
        making->SetGUID(iid);
        making->SetSource(Bstr(error.Source()).Get());
        making->SetDescription(Bstr(error.Description()).Get());
        const auto made = ComPointer<IErrorInfo>::From(making.Get());
        if (made) SetErrorInfo(0, made.Get());
    } catch (const std::exception&) {
        // Without memory for the words the number goes alone.
    }
    return status;
}

void RequireSuccess(HRESULT status) {
    if (FAILED(status)) throw AutomationError(status, "Job_83", SystemWords(status));
}

}  // namespace kxjob
