#include "windows/argument_list.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "com/handles/text.h"
#include "support/fuzz_input.h"

namespace kxjob::fuzz {
namespace {

constexpr int kDeepest = 3;

/// What references and arrays can be of, each by its place among the characters from '0' on.
constexpr std::array<VARTYPE, 17> kTypes = {VT_I1,   VT_UI1,   VT_I2,       VT_UI2,     VT_I4,  VT_UI4,
                                            VT_I8,   VT_UI8,   VT_R4,       VT_R8,      VT_CY,  VT_DATE,
                                            VT_BOOL, VT_ERROR, VT_DISPATCH, VT_UNKNOWN, VT_BSTR};

VARTYPE TypeOf(char letter) {
    return kTypes[static_cast<unsigned char>(letter - '0') % kTypes.size()];
}

/// The first character, which is taken off; a blank when there is none.
char TakeFirst(std::string_view& text) {
    if (text.empty()) return ' ';
    const char first = text.front();
    text.remove_prefix(1);
    return first;
}

VARIANT OfType(VARTYPE type) {
    VARIANT value{};
    value.vt = type;
    return value;
}

VARIANT Reference(VARTYPE type, void* place) {
    VARIANT reference = OfType(static_cast<VARTYPE>(VT_BYREF | type));
    reference.byref = place;
    return reference;
}

void RequireUnlocked(const SAFEARRAY* array) {
    if (array != nullptr) Require(array->cLocks == 0, "no array stays locked");
}

/// No input may find a store: what could be a connection string says nothing.
BSTR TextWithoutStore(std::string_view text) {
    std::string tamed(text);
    std::replace(tamed.begin(), tamed.end(), '=', '-');
    return Bstr(std::string_view(tamed == "connection" ? "Driver=None" : tamed)).Release();
}

LONG LowerBound(char letter, std::size_t count) {
    switch (letter) {
        case '9': return count == 0 ? LONG_MAX : LONG_MAX - static_cast<LONG>(count - 1);
        case '-': return LONG_MIN;
        default: return letter - '0';
    }
}

/// One dimension of `count` elements, or more with one element each in front.
SAFEARRAY* NewArray(VARTYPE type, char lower, char dimensions, std::size_t count) {
    std::array<SAFEARRAYBOUND, 8> bounds{};
    const std::size_t number = 1 + static_cast<unsigned char>(dimensions) % bounds.size();
    bounds.fill({1, LowerBound(lower, 1)});
    bounds[number - 1] = {static_cast<ULONG>(count), LowerBound(lower, count)};
    return SafeArrayCreate(type, static_cast<UINT>(number), bounds.data());
}

/// Its elements are zero.
SAFEARRAY* NewTypedArray(std::string_view text) {
    const char lower = TakeFirst(text);
    const char dimensions = TakeFirst(text);
    const VARTYPE type = TypeOf(TakeFirst(text));
    return NewArray(type, lower, dimensions, text.size());
}

}  // namespace

/// Counts its references. Any name is a member.
class ArgumentList::Object final : public IDispatch {
public:
    explicit Object(std::string_view answer) : answer_(answer) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ULONG References() const { return references_; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool isIt = IsEqualGUID(iid, IID_IUnknown) != 0 || IsEqualGUID(iid, IID_IDispatch) != 0;
        *object = isIt ? this : nullptr;
        if (isIt) AddRef();
        return isIt ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT count, LCID /*locale*/,
                               DISPID* ids) override {
        std::fill_n(ids, count, 1);
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID /*member*/, REFIID /*reserved*/, LCID /*locale*/, WORD /*kind*/,
                        DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* /*exception*/,
                        UINT* /*badArgument*/) override {
        if (answer_.empty()) return E_FAIL;
        if (result == nullptr) return S_OK;
        *result = OfType(parameters->cArgs == 0 ? VT_I4 : VT_BSTR);
        if (parameters->cArgs == 0) {
            result->lVal = std::atol(answer_.c_str());
        } else {
            result->bstrVal = TextWithoutStore(answer_);
        }
        return S_OK;
    }

private:
    ~Object() = default;

    ULONG references_ = 1;
    std::string answer_;
};

ArgumentList::ArgumentList(std::span<const std::string> texts) {
    std::vector<VARIANT> named;
    for (std::string_view text : texts) {
        if (text.starts_with('=')) {
            TakeFirst(text);
            names_.push_back(TakeFirst(text) - '3');
            named.push_back(Argument(text, kDeepest));
        } else {
            arguments_.insert(arguments_.begin(), Argument(text, kDeepest));
        }
    }
    arguments_.insert(arguments_.begin(), named.begin(), named.end());
    before_ = arguments_;
    for (const VARIANT& argument : before_) {
        texts_.push_back(argument.vt == VT_BSTR ? TextOf(argument.bstrVal) : std::string());
    }
}

ArgumentList::~ArgumentList() {
    for (VARIANT& argument : arguments_) VariantClear(&argument);
    for (Cell& cell : cells_) {
        VariantClear(&cell.variable);
        SysFreeString(cell.text);
        SafeArrayDestroy(cell.array);
    }
    for (const auto& object : objects_) Require(object->References() == 1, "nobody keeps an object");
}

DISPPARAMS ArgumentList::Parameters() {
    return {arguments_.data(), names_.data(), static_cast<UINT>(arguments_.size()),
            static_cast<UINT>(names_.size())};
}

void ArgumentList::RequireUntouched() const {
    for (std::size_t i = 0; i < before_.size(); ++i) {
        Require(std::memcmp(&arguments_[i], &before_[i], sizeof(VARIANT)) == 0, "an argument is what it was");
        if (before_[i].vt != VT_BSTR) continue;
        Require(TextOf(arguments_[i].bstrVal) == texts_[i], "the text of an argument is what it was");
    }
    for (const VARIANT& argument : arguments_) {
        if ((argument.vt & (VT_ARRAY | VT_BYREF)) == VT_ARRAY) RequireUnlocked(argument.parray);
    }
    for (const Cell& cell : cells_) RequireUnlocked(cell.array);
}

VARIANT ArgumentList::Argument(std::string_view text, int depth) {
    VARIANT value{};
    const char kind = TakeFirst(text);
    switch (kind) {
        case 'z': return OfType(VT_NULL);
        case 'm':
            value = OfType(VT_ERROR);
            value.scode = DISP_E_PARAMNOTFOUND;
            return value;
        case 't':
            value = OfType(VT_BSTR);
            value.bstrVal = TextWithoutStore(text);
            return value;
        case 'n':
            value = OfType(VT_I4);
            value.lVal = std::strtol(std::string(text).c_str(), nullptr, 10);
            return value;
        case 'r':
            value = OfType(VT_R8);
            value.dblVal = std::strtod(std::string(text).c_str(), nullptr);
            return value;
        case 'b':
            value = OfType(VT_BOOL);
            value.boolVal = text.empty() ? VARIANT_FALSE : VARIANT_TRUE;
            return value;
        case 'd': return OfType(VT_DISPATCH);
        case 'u':
        case 'y': {
            const auto code = static_cast<VARTYPE>(std::strtoul(std::string(text).c_str(), nullptr, 10));
            return OfType(static_cast<VARTYPE>(kind == 'y' ? code | VT_BYREF : code & ~VT_BYREF));
        }
        case 'o':
            value = OfType(VT_DISPATCH);
            value.pdispVal = ComPointer(objects_.emplace_back(new Object(text))).Release();
            return value;
        case 's': {
            Cell& cell = NewCell();
            cell.text = TextWithoutStore(text);
            return Reference(VT_BSTR, &cell.text);
        }
        case 'x': {
            const VARTYPE type = TypeOf(TakeFirst(text));
            return Reference(type, type == VT_BSTR ? static_cast<void*>(&NewCell().text) : &NewCell().plain);
        }
        case 'v': {
            if (depth == 0) return value;
            Cell& cell = NewCell();
            cell.variable = Argument(text, depth - 1);
            return Reference(VT_VARIANT, &cell.variable);
        }
        case 'a':
        case 'k':
            value.parray = kind == 'a' ? MakeArray(text, depth) : NewTypedArray(text);
            if (value.parray == nullptr) return {};
            SafeArrayGetVartype(value.parray, &value.vt);
            value.vt |= VT_ARRAY;
            return value;
        case 'A': {
            Cell& cell = NewCell();
            cell.array = MakeArray(text, depth);
            return Reference(VT_ARRAY | VT_VARIANT, &cell.array);
        }
        default: return value;
    }
}

SAFEARRAY* ArgumentList::MakeArray(std::string_view text, int depth) {
    const char lower = TakeFirst(text);
    const char dimensions = TakeFirst(text);
    std::vector<std::string_view> elements;
    while (!text.empty()) {
        elements.push_back(text.substr(0, text.find('|')));
        text.remove_prefix(std::min(text.size(), elements.back().size() + 1));
    }
    SAFEARRAY* const array = NewArray(VT_VARIANT, lower, dimensions, elements.size());
    if (array == nullptr) return nullptr;
    auto* const places = static_cast<VARIANT*>(array->pvData);
    for (std::size_t i = 0; depth > 0 && i < elements.size(); ++i)
        places[i] = Argument(elements[i], depth - 1);
    return array;
}

}  // namespace kxjob::fuzz
