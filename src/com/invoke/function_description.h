#pragma once

#include <ole2.h>
#include <windows.h>

#include <optional>
#include <utility>

namespace kxjob {

/// Owns a member's description from a type library.
class FunctionDescription {
public:
    /// The member of the interface itself with this number and kind; none if it has no such member. What it
    /// inherits does not count.
    static std::optional<FunctionDescription> Find(ITypeInfo& vtable, DISPID member, WORD kind);

    FunctionDescription(FunctionDescription&& other) noexcept
        : info_(other.info_), function_(std::exchange(other.function_, nullptr)) {}
    FunctionDescription& operator=(FunctionDescription&&) = delete;
    ~FunctionDescription() {
        if (function_ != nullptr) info_->ReleaseFuncDesc(function_);
    }

    const FUNCDESC* operator->() const { return function_; }

    UINT ParameterCount() const { return static_cast<UINT>(function_->cParams); }
    /// How many of them, from the first on, a caller can give: all but the result.
    UINT SettableCount() const;
    /// What a parameter is called with: an enumeration is VT_I4, a pointer VT_BYREF, an interface VT_DISPATCH
    /// or VT_UNKNOWN.
    VARTYPE TypeOf(UINT parameter) const;
    bool IsOptional(UINT parameter) const { return Has(parameter, PARAMFLAG_FOPT); }
    /// Null when none is declared.
    const VARIANT* DefaultOf(UINT parameter) const;

private:
    FunctionDescription(ITypeInfo& info, FUNCDESC* function) : info_(&info), function_(function) {}
    bool Has(UINT parameter, USHORT flag) const;

    ITypeInfo* info_;  // outlives this
    FUNCDESC* function_;
};

}  // namespace kxjob
