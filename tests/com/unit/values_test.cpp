#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "com/handles/text.h"
#include "com/handles/variant.h"
#include "com/support/script_call.h"
#include "com/values/value_of_variant.h"
#include "com/values/variant_of_value.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing_support::Number;
using testing_support::Reference;
using testing_support::Text;

Value ThereAndBack(const Value& value) {
    return ValueOf(*VariantOf(value));
}

std::int32_t NumberOfErrorFrom(const VARIANT& variant) {
    try {
        ValueOf(variant);
    } catch (const AutomationError& error) {
        return error.Number();
    }
    return 0;
}

VARIANT OfType(VARTYPE type, ULONGLONG bits) {
    VARIANT variant{};
    variant.vt = type;
    variant.ullVal = bits;
    return variant;
}

TEST(Values, SurviveTheWayToClientsAndBack) {
    for (const Value& value :
         {Value(), Value(Null{}), Value(true), Value(false), Value(-7), Value(std::int64_t{1} << 40),
          Value(0.5), Value(""), Value("caf\xC3\xA9 \xF0\x9F\x98\x80"), Value(std::string("a\0b", 3)),
          Value("\xED\xA0\x80 lone")}) {
        EXPECT_EQ(ThereAndBack(value), value);
    }
}

TEST(Values, OfSmallNumberTypesAreWholeNumbers) {
    EXPECT_EQ(ValueOf(OfType(VT_I1, 0xFF)), Value(-1));
    EXPECT_EQ(ValueOf(OfType(VT_UI1, 0xFF)), Value(255));
    EXPECT_EQ(ValueOf(OfType(VT_I2, 0xFFFF)), Value(-1));
    EXPECT_EQ(ValueOf(OfType(VT_UI2, 0xFFFF)), Value(65535));
    EXPECT_EQ(ValueOf(OfType(VT_INT, 5)), Value(5));
}

TEST(Values, OfUnsignedTypesKeepTheirSize) {
    EXPECT_EQ(ValueOf(OfType(VT_UI4, 0xFFFFFFFF)), Value(std::int64_t{4294967295}));
    EXPECT_EQ(ValueOf(OfType(VT_UI4, 7)), Value(7));
    EXPECT_EQ(ValueOf(OfType(VT_UI8, 7)), Value(7));
    EXPECT_EQ(ValueOf(OfType(VT_UI8, 0xFFFFFFFFFFFFFFFF)), Value(18446744073709551615.0));
    EXPECT_EQ(ValueOf(OfType(VT_I8, 1ULL << 40)), Value(std::int64_t{1} << 40));
}

TEST(Values, OfCurrencyAndDecimalAreDoubles) {
    EXPECT_EQ(ValueOf(OfType(VT_CY, 12500)), Value(1.25));
    VARIANT decimal{};
    decimal.decVal.scale = 1;
    decimal.decVal.Lo64 = 25;
    decimal.vt = VT_DECIMAL;
    EXPECT_EQ(ValueOf(decimal), Value(2.5));
}

TEST(Values, OfDatesAreIsoText) {
    VARIANT date{};
    date.vt = VT_DATE;
    date.date = 36526.75;
    EXPECT_EQ(ValueOf(date), Value("2000-01-01T18:00:00"));
}

TEST(Values, BehindAnyReferenceAreFollowed) {
    VARIANT variable = Text("text");
    EXPECT_EQ(ValueOf(Reference(variable)), Value("text"));

    double number = 2.5;
    VARIANT typed{};
    typed.vt = VT_BYREF | VT_R8;
    typed.pdblVal = &number;
    EXPECT_EQ(ValueOf(typed), Value(2.5));
    EXPECT_EQ(ValueOf(Reference(typed)), Value(2.5));
}

TEST(Values, WithoutACounterpartAreTypeMismatches) {
    VARIANT null{};
    null.vt = VT_BYREF | VT_BSTR;
    EXPECT_EQ(NumberOfErrorFrom(null), error_number::kTypeMismatch);
    EXPECT_EQ(NumberOfErrorFrom(OfType(VT_RECORD, 0)), error_number::kTypeMismatch);
    EXPECT_EQ(NumberOfErrorFrom(OfType(VT_ERROR, static_cast<ULONG>(E_FAIL))), error_number::kTypeMismatch);
    EXPECT_EQ(NumberOfErrorFrom(OfType(0x1234, 0)), error_number::kTypeMismatch);
    VARIANT self{};
    self.vt = VT_BYREF | VT_VARIANT;
    self.pvarVal = &self;
    EXPECT_EQ(NumberOfErrorFrom(self), error_number::kTypeMismatch);
}

TEST(Values, ThatWereLeftOutAreEmpty) {
    EXPECT_EQ(ValueOf(testing_support::Missing()), Value());
}

TEST(Arrays, KeepTheirLowerBound) {
    const Value list = Array::List({Value("a"), Value(2), Value(Null{})}, 1);
    EXPECT_EQ(ThereAndBack(list), list);
}

TEST(Arrays, OfTypedElementsAreRead) {
    SAFEARRAYBOUND bound{2, 5};
    SAFEARRAY* texts = SafeArrayCreate(VT_BSTR, 1, &bound);
    LONG index = 6;
    SafeArrayPutElement(texts, &index, Bstr("second").Get());
    VARIANT variant{};
    variant.vt = VT_ARRAY | VT_BSTR;
    variant.parray = texts;
    EXPECT_EQ(ValueOf(variant), Value(Array::List({Value(""), Value("second")}, 5)));

    VARIANT reference{};
    reference.vt = VT_BYREF | VT_ARRAY | VT_BSTR;
    reference.pparray = &texts;
    EXPECT_EQ(ValueOf(reference).General().ElementCount(), 2U);
    SafeArrayDestroy(texts);
}

TEST(Arrays, OfSeveralDimensionsKeepEachElementInItsPlace) {
    Array array({{1, 2}, {-1, 3}});
    int next = 0;
    for (std::int32_t i = 1; i <= 2; ++i) {
        for (std::int32_t j = -1; j <= 1; ++j) array.At(std::vector<std::int32_t>{i, j}) = next++;
    }
    const Variant variant = VariantOf(Value(array));
    LONG place[] = {2, 0};
    Variant element;
    ASSERT_EQ(SafeArrayGetElement(variant->parray, place, &*element), S_OK);
    EXPECT_EQ(element->lVal, 4);
    EXPECT_EQ(ValueOf(*variant), Value(array));
}

TEST(Arrays, WithoutElementsKeepTheirBounds) {
    const Value none = Array({{0, 0}});
    const Variant variant = VariantOf(none);
    LONG upper = 0;
    ASSERT_EQ(SafeArrayGetUBound(variant->parray, 1, &upper), S_OK);
    EXPECT_EQ(upper, -1);
    EXPECT_EQ(ValueOf(*variant), none);
}

TEST(Arrays, ThatWereNeverGivenBoundsAreSubscriptErrors) {
    VARIANT variant{};
    variant.vt = VT_ARRAY | VT_VARIANT;
    EXPECT_EQ(NumberOfErrorFrom(variant), error_number::kSubscriptOutOfRange);
}

TEST(Rows, AreColumnsByRowsFromZero) {
    RowArray rows(2);
    rows.AddRow({Value("a"), Value(1)});
    rows.AddRow({Value("b"), Value(Null{})});
    rows.AddRow({Value("c"), Value(3)});
    const Variant variant = VariantOf(Value(rows));
    ASSERT_EQ(SafeArrayGetDim(variant->parray), 2U);
    LONG upper = 0;
    SafeArrayGetUBound(variant->parray, 1, &upper);
    EXPECT_EQ(upper, 1) << "columns";
    SafeArrayGetUBound(variant->parray, 2, &upper);
    EXPECT_EQ(upper, 2) << "rows";
    LONG place[] = {1, 2};
    Variant cell;
    ASSERT_EQ(SafeArrayGetElement(variant->parray, place, &*cell), S_OK);
    EXPECT_EQ(cell->lVal, 3);
}

}  // namespace
}  // namespace kxjob
