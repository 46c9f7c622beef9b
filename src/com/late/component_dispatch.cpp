#include "com/late/component_dispatch.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "automation/letter_case.h"
#include "com/errors/at_boundary.h"
#include "com/errors/error_info.h"
#include "com/handles/text.h"
#include "com/server/com_object.h"
#include "com/values/value_of_variant.h"
#include "com/values/variant_of_value.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

class ComponentDispatch final : public ComObject<Holder::Object, IDispatch> {
public:
    explicit ComponentDispatch(ComponentRef component) : component_(std::move(component)) {
        for (const std::string_view member : component_->MemberNames()) names_.emplace_back(member);
        isComplete_ = !names_.empty();
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        return E_NOTIMPL;
    }

    STDMETHODIMP GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                               DISPID* ids) override {
        if (names == nullptr || ids == nullptr || count == 0) return E_POINTER;
        std::fill_n(ids, count, DISPID_UNKNOWN);
        const HRESULT looked = AtBoundary(IID_IDispatch, [&] { ids[0] = IdOf(ToUtf8(names[0])); });
        if (FAILED(looked)) return looked;
        return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
    }

    STDMETHODIMP Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD kind,
                        DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                        UINT* /*badArgument*/) override {
        if (member < 1 || static_cast<std::size_t>(member) > names_.size()) return DISP_E_MEMBERNOTFOUND;
        if (parameters == nullptr || (parameters->cArgs > 0 && parameters->rgvarg == nullptr)) {
            return E_INVALIDARG;
        }
        const bool sets = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        if (parameters->cNamedArgs > (sets ? 1U : 0U)) return DISP_E_NONAMEDARGS;
        if (sets && parameters->cArgs != 1) return DISP_E_BADPARAMCOUNT;

        SetErrorInfo(0, nullptr);
        const HRESULT status = AtBoundary(IID_IDispatch, [&] {
            const Value answer = Perform(names_[static_cast<std::size_t>(member) - 1], kind, *parameters);
            if (result != nullptr) *result = VariantOf(answer).Release();
        });
        if (SUCCEEDED(status) || status == DISP_E_MEMBERNOTFOUND) return status;
        FillException(status, exception);
        return DISP_E_EXCEPTION;
    }

private:
    /// DISPID_UNKNOWN for a member that the component does not have.
    DISPID IdOf(std::string name) {
        const std::string folded = FoldedCase(name);
        const auto known = std::find_if(names_.begin(), names_.end(), [&](const std::string& candidate) {
            return FoldedCase(candidate) == folded;
        });
        if (known != names_.end()) return static_cast<DISPID>(known - names_.begin()) + 1;
        if (isComplete_) return DISPID_UNKNOWN;
        names_.push_back(std::move(name));
        return static_cast<DISPID>(names_.size());
    }

    Value Perform(const std::string& member, WORD kind, const DISPPARAMS& parameters) {
        std::vector<Value> arguments;
        for (UINT i = parameters.cArgs; i-- > 0;) arguments.push_back(ValueOf(parameters.rgvarg[i]));
        if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
            component_->Let(member, arguments[0]);
            return {};
        }
        const bool mayRead = (kind & DISPATCH_PROPERTYGET) != 0 && arguments.empty();
        if (!mayRead) return component_->Call(member, arguments);
        try {
            return component_->Get(member);
        } catch (const AutomationError& error) {
            const bool mayCall = (kind & DISPATCH_METHOD) != 0;
            if (!mayCall || error.Number() != error_number::kUnknownMember) throw;
        }
        return component_->Call(member, arguments);
    }

    ComponentRef component_;
    std::vector<std::string> names_;  // a member's id is its place, counted from 1
    bool isComplete_ = false;
};

}  // namespace

ComPointer<IDispatch> MakeComponentDispatch(ComponentRef component) {
    return ComPointer<IDispatch>(new ComponentDispatch(std::move(component)));
}

}  // namespace kxjob
