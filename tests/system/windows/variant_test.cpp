#include "com/variant.h"

#include <gmock/gmock.h>
#include <limits>

#include "fakes/printing.h"

namespace system_tests {
namespace {

using automation::Value;
using ::com::ToValue;
using ::com::Variant;

class RoundTrip : public testing::TestWithParam<Value> {};

TEST_P(RoundTrip, VariantRoundTripKeepsTypeAndContent) {
  EXPECT_EQ(ToValue(Variant(GetParam()).get()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Values, RoundTrip,
    testing::Values(Value(automation::Empty{}), Value(automation::Null{}), Value(true),
                    Value(false), Value(std::int16_t{-7}), Value(std::int32_t{70000}), Value(1.5),
                    Value(automation::Currency{-12345678}),
                    Value(automation::Decimal{.lo = 12345, .hi = 6, .scale = 3, .negative = true}),
                    Value(automation::Date{46342.586805555555}), Value(u""),
                    Value(std::u16string(u"Å\0ж", 3))));

TEST(Variant, IntegersOfEveryWidthAreRead) {
  VARIANT raw{};
  V_VT(&raw) = VT_UI1;
  V_UI1(&raw) = 200;
  EXPECT_EQ(ToValue(raw), Value(std::int16_t{200}));
  V_VT(&raw) = VT_I1;
  V_I1(&raw) = -5;
  EXPECT_EQ(ToValue(raw), Value(std::int16_t{-5}));
  V_VT(&raw) = VT_UI2;
  V_UI2(&raw) = 60000;
  EXPECT_EQ(ToValue(raw), Value(std::int32_t{60000}));
  V_VT(&raw) = VT_UI4;
  V_UI4(&raw) = 4000000000U;
  EXPECT_EQ(ToValue(raw), Value(automation::Decimal{.lo = 4000000000U}));
  V_VT(&raw) = VT_I8;
  V_I8(&raw) = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(ToValue(raw), Value(automation::Decimal{.lo = 9223372036854775808U, .negative = true}));
  V_VT(&raw) = VT_R4;
  V_R4(&raw) = 0.5F;
  EXPECT_EQ(ToValue(raw), Value(0.5));
}

TEST(Variant, SingleIsReadByItsSevenDigits) {
  VARIANT raw{};
  V_VT(&raw) = VT_R4;
  V_R4(&raw) = 1.1F;
  EXPECT_EQ(ToValue(raw), Value(1.1));
}

TEST(Variant, ReferencesAreFollowed) {
  long number = 4711;
  VARIANT raw{};
  V_VT(&raw) = VT_BYREF | VT_I4;
  V_I4REF(&raw) = &number;
  EXPECT_EQ(ToValue(raw), Value(std::int32_t{4711}));
  VARIANT outer{};
  V_VT(&outer) = VT_BYREF | VT_VARIANT;
  const Variant text{Value(u"Öberg")};
  V_VARIANTREF(&outer) = const_cast<VARIANT*>(&text.get());
  EXPECT_EQ(ToValue(outer), Value(u"Öberg"));
}

TEST(Variant, NullBstrReadsAsEmptyText) {
  VARIANT raw{};
  V_VT(&raw) = VT_BSTR;
  EXPECT_EQ(ToValue(raw), Value(u""));
}

TEST(Variant, UnsupportedVariantTypesAreRefused) {
  constexpr std::int32_t kTypeMismatch = 13;
  for (const VARTYPE type : {VT_ERROR, VT_DISPATCH, VT_UNKNOWN}) {
    VARIANT raw{};
    V_VT(&raw) = type;
    EXPECT_EQ(fakes::ErrorNumberOf([&] { ToValue(raw); }), kTypeMismatch);
  }
  VARIANT array{};
  V_VT(&array) = VT_ARRAY | VT_UI1;
  EXPECT_EQ(fakes::ErrorNumberOf([&] { ToValue(array); }), kTypeMismatch);
}

}  // namespace
}  // namespace system_tests
