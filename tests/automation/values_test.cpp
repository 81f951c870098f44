#include <gtest/gtest.h>

#include "database/engine/automation/variant_value.h"
#include "tests/engine/test_database.h"

namespace engine::automation {
namespace {

using support::Variant;

TEST(AutomationValues, LeaveAsTheTypeOfTheirField) {
  using std::int32_t;
  struct Case {
    Value value;
    DataType type;
    VARTYPE leaves_as;
  };
  const Case cases[] = {
      {Null{}, DataType::Text, VT_NULL},
      {true, DataType::Boolean, VT_BOOL},
      {int32_t{255}, DataType::Byte, VT_UI1},
      {int32_t{256}, DataType::Byte, VT_I4},
      {int32_t{-1}, DataType::Byte, VT_I4},
      {int32_t{-32768}, DataType::Integer, VT_I2},
      {int32_t{32768}, DataType::Integer, VT_I4},
      {int32_t{1}, DataType::Long, VT_I4},
      {1.5f, DataType::Single, VT_R4},
      {1.5, DataType::Double, VT_R8},
      {Date{-1.25}, DataType::Date, VT_DATE},
      {std::string("Größe \U0001F600"), DataType::Memo, VT_BSTR},
      {std::string("a\0b", 3), DataType::Text, VT_BSTR},
      {std::string(), DataType::Text, VT_BSTR},
  };
  for (const Case& row : cases) {
    const Variant variant = to_variant(row.value, row.type);
    EXPECT_EQ(variant.type(), row.leaves_as) << row.value.index() << " for type " << static_cast<int>(row.type);
    EXPECT_EQ(to_value(variant), row.value) << "and arrives as it left";
  }
}

TEST(AutomationValues, OfTypesThatNoFieldOfOursHasAreReadWhereTheyAreNumbers) {
  VARIANT money;
  VariantInit(&money);
  V_VT(&money) = VT_CY;
  V_CY(&money).int64 = 12500;
  EXPECT_EQ(to_value(Variant(money)), Value{1.25});
  EXPECT_EQ(to_value(Variant()), Value{Null{}});
  VARIANT error;
  VariantInit(&error);
  V_VT(&error) = VT_ERROR;
  EXPECT_EQ(test::error_number([&] { to_value(Variant(error)); }), 13);
}

}  // namespace
}  // namespace engine::automation
