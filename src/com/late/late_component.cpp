#include "com/late/late_component.h"

#include <utility>
#include <vector>

#include "com/errors/error_info.h"
#include "com/handles/text.h"
#include "com/handles/variant.h"
#include "com/late/component_dispatch.h"
#include "com/values/value_of_variant.h"
#include "com/values/variant_of_value.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

/// The arguments of one call, as IDispatch wants them: last one first.
class PackedArguments {
public:
    explicit PackedArguments(std::span<const Value> arguments) {
        owned_.reserve(arguments.size());
        for (std::size_t i = arguments.size(); i-- > 0;) owned_.push_back(VariantOf(arguments[i]));
        for (const Variant& variant : owned_) shown_.push_back(*variant);
    }

    DISPPARAMS Parameters() { return {shown_.data(), nullptr, static_cast<UINT>(shown_.size()), 0}; }

private:
    std::vector<Variant> owned_;
    std::vector<VARIANT> shown_;  // the same, in the plain form; owns nothing
};

Value Invoke(IDispatch& object, DISPID member, WORD kind, DISPPARAMS parameters) {
    Variant result;
    EXCEPINFO exception{};
    const bool wantsResult = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0;
    const HRESULT status = object.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                         wantsResult ? &*result : nullptr, &exception, nullptr);
    if (status == DISP_E_EXCEPTION) throw ErrorOf(exception);
    if (FAILED(status)) throw ErrorOf(status);
    return ValueOf(*result);
}

}  // namespace

LateComponent::LateComponent(ComPointer<IDispatch> object, std::string name)
    : object_(std::move(object)), name_(std::move(name)) {}

DISPID LateComponent::IdOf(std::string_view member) {
    std::wstring name = ToWide(member);
    wchar_t* names = name.data();
    DISPID id = DISPID_UNKNOWN;
    const HRESULT status = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (status == DISP_E_UNKNOWNNAME) RaiseUnknownMember(member);
    if (FAILED(status)) throw ErrorOf(status);
    return id;
}

Value LateComponent::Get(std::string_view property) {
    return Invoke(*object_.Get(), IdOf(property), DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
}

void LateComponent::Let(std::string_view property, const Value& value) {
    Variant packed = VariantOf(value);
    DISPID target = DISPID_PROPERTYPUT;
    const WORD kind = value.IsObject() ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
    Invoke(*object_.Get(), IdOf(property), kind, {&*packed, &target, 1, 1});
}

Value LateComponent::Call(std::string_view method, std::span<const Value> arguments) {
    // A member that gives a result may be a property with arguments.
    PackedArguments packed(arguments);
    return Invoke(*object_.Get(), IdOf(method), DISPATCH_METHOD | DISPATCH_PROPERTYGET, packed.Parameters());
}

ComponentRef ComponentOf(ComPointer<IDispatch> object) {
    if (!object) return nullptr;
    return std::make_shared<LateComponent>(std::move(object), "Object");
}

ComPointer<IDispatch> DispatchOf(const ComponentRef& component) {
    if (component == nullptr) return {};
    if (const auto* late = dynamic_cast<const LateComponent*>(component.get())) return late->Object();
    return MakeComponentDispatch(component);
}

}  // namespace kxjob
