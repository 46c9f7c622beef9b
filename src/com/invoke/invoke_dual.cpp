#include "com/invoke/invoke_dual.h"

#include <optional>
#include <vector>

#include "com/errors/error_info.h"
#include "com/invoke/bound_argument.h"
#include "com/invoke/function_description.h"

namespace kxjob {
namespace {

bool IsSound(const DISPPARAMS* parameters) {
    return parameters != nullptr && (parameters->cArgs == 0 || parameters->rgvarg != nullptr) &&
           (parameters->cNamedArgs == 0 || parameters->rgdispidNamedArgs != nullptr) &&
           parameters->cNamedArgs <= parameters->cArgs;
}

bool IsMissing(const VARIANT& given) {
    return given.vt == VT_ERROR && given.scode == DISP_E_PARAMNOTFOUND;
}

/// One late-bound call on its way: the caller's arguments are spread over the parameters, the method is
/// called, and what changed is handed back.
class Invocation {
public:
    Invocation(const FunctionDescription& function, const LateCall& call)
        : function_(function),
          call_(call),
          given_(function.SettableCount(), kNone),
          bound_(function.ParameterCount()) {}

    /// Finds the argument of each parameter; the caller stores them last to first, the named ones in front.
    HRESULT Spread() {
        const DISPPARAMS& all = *call_.parameters;
        const UINT positional = all.cArgs - all.cNamedArgs;
        if (all.cArgs > given_.size()) return DISP_E_BADPARAMCOUNT;
        for (UINT i = 0; i < positional; ++i) given_[i] = all.cArgs - 1 - i;
        for (UINT i = 0; i < all.cNamedArgs; ++i) {
            const DISPID name = all.rgdispidNamedArgs[i];
            const auto parameter =
                name == DISPID_PROPERTYPUT ? given_.size() - 1 : static_cast<std::size_t>(name);
            if (parameter >= given_.size() || given_[parameter] != kNone) return Bad(DISP_E_PARAMNOTFOUND, i);
            given_[parameter] = i;
        }
        return S_OK;
    }

    HRESULT Bind() {
        for (UINT parameter = 0; parameter < given_.size(); ++parameter) {
            const HRESULT status = BindOne(parameter);
            if (FAILED(status)) return Bad(status, given_[parameter]);
        }
        if (HasResult()) bound_.back().MakeRoom(function_.TypeOf(function_.ParameterCount() - 1));
        return S_OK;
    }

    /// The method's own status.
    HRESULT Call(IUnknown* self) {
        std::vector<VARTYPE> types;
        std::vector<VARIANT*> values;
        for (UINT parameter = 0; parameter < bound_.size(); ++parameter) {
            types.push_back(function_.TypeOf(parameter));
            values.push_back(bound_[parameter].Passed());
        }
        VARIANT status{};
        // VT_ERROR has the size of a status; VT_HRESULT is not taken everywhere.
        const HRESULT called =
            DispCallFunc(self, static_cast<ULONG_PTR>(function_->oVft), function_->callconv, VT_ERROR,
                         static_cast<UINT>(values.size()), types.data(), values.data(), &status);
        return FAILED(called) ? called : status.scode;
    }

    /// In/out arguments go back after an error too, as a true reference would have shown the change.
    HRESULT GiveBack() {
        HRESULT first = S_OK;
        for (UINT parameter = 0; parameter < given_.size(); ++parameter) {
            const HRESULT status = bound_[parameter].GiveBack(call_.locale);
            if (FAILED(status) && SUCCEEDED(first)) first = Bad(status, given_[parameter]);
        }
        return first;
    }

    void GiveResult() {
        if (call_.result == nullptr || !HasResult()) return;
        *call_.result = bound_.back().ReleaseResult();
    }

private:
    static constexpr UINT kNone = static_cast<UINT>(-1);

    bool HasResult() const { return bound_.size() > given_.size(); }

    HRESULT BindOne(UINT parameter) {
        const VARTYPE want = function_.TypeOf(parameter);
        VARIANT* given = given_[parameter] == kNone ? nullptr : &call_.parameters->rgvarg[given_[parameter]];
        const bool optional = function_.IsOptional(parameter);
        if (given != nullptr && !(IsMissing(*given) && (optional || want != VT_VARIANT))) {
            return bound_[parameter].Take(*given, want, call_.locale);
        }
        if (!optional) return DISP_E_PARAMNOTOPTIONAL;
        return bound_[parameter].LeaveOut(function_.DefaultOf(parameter), want);
    }

    HRESULT Bad(HRESULT status, UINT argument) {
        if (call_.badArgument != nullptr && argument != kNone) *call_.badArgument = argument;
        return status;
    }

    const FunctionDescription& function_;
    const LateCall& call_;
    std::vector<UINT> given_;  // for each settable parameter: the place of its argument
    std::vector<BoundArgument> bound_;
};

}  // namespace

HRESULT InvokeDual(IUnknown* self, ITypeInfo& vtable, const LateCall& call) {
    if (!IsSound(call.parameters)) return E_INVALIDARG;
    if (call.result != nullptr) VariantInit(call.result);
    const std::optional<FunctionDescription> function =
        FunctionDescription::Find(vtable, call.member, call.kind);
    if (!function) return DISP_E_MEMBERNOTFOUND;

    Invocation invocation(*function, call);
    HRESULT status = invocation.Spread();
    if (SUCCEEDED(status)) status = invocation.Bind();
    if (FAILED(status)) return status;

    SetErrorInfo(0, nullptr);
    const HRESULT answered = invocation.Call(self);
    status = invocation.GiveBack();
    if (FAILED(answered)) {
        FillException(answered, call.exception);
        return DISP_E_EXCEPTION;
    }
    if (SUCCEEDED(status)) invocation.GiveResult();
    return status;
}

}  // namespace kxjob
