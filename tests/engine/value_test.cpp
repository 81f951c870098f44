#include "database/engine/value.h"

#include <functional>
#include <limits>

#include "support/user_locale.h"
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

using std::int32_t;

class Values : public testing::Test {
 protected:
  void TearDown() override { support::set_user_locale({}); }
};

TEST_F(Values, ConvertAsAnAssignmentDoes) {
  struct Case {
    std::function<double(const Value&)> convert;
    Value value;
    double expected;
    int number = 0;
  };
  const auto int16 = [](const Value& value) { return double{static_cast<double>(to_int16(value))}; };
  const auto int32 = [](const Value& value) { return double{static_cast<double>(to_int32(value))}; };
  const auto single = [](const Value& value) { return static_cast<double>(to_single(value)); };
  const auto yes_no = [](const Value& value) { return to_bool(value) ? -1.0 : 0.0; };
  const auto date = [](const Value& value) { return to_date(value).days; };
  const std::vector<Case> cases = {
      {int16, 0.5, 0},
      {int16, 1.5, 2},
      {int16, -0.5, 0},
      {int16, Date{2.5}, 2},
      {int16, true, -1},
      {int16, std::string("1.234,5"), 1234},
      {int16, 32767.49, 32767},
      {int16, 32767.5, 0, 6},
      {int16, -32768.6, 0, 6},
      {int16, std::numeric_limits<double>::quiet_NaN(), 0, 6},
      {int16, Null{}, 0, 94},
      {int16, std::string("12 mg"), 0, 13},
      {int32, -2147483648.5, -2147483648.0},
      {int32, 2147483647.5, 0, 6},
      {single, 1e39, 0, 6},
      {single, double{std::numeric_limits<float>::max()}, double{std::numeric_limits<float>::max()}},
      {single, 0.5, 0.5},
      {to_double, std::string("5,6"), 5.6},
      {to_double, std::string(), 0, 13},
      {to_double, Null{}, 0, 94},
      {yes_no, std::string("true"), -1},
      {yes_no, std::string("FALSE"), 0},
      {yes_no, std::string("0,5"), -1},
      {yes_no, 0.0, 0},
      {yes_no, std::string("ja"), 0, 13},
      {yes_no, Null{}, 0, 94},
      {date, std::string("1.1.1900"), 2},
      {date, std::string("31.12.1899 12:00"), 1.5},
      {date, std::string("29.12.1899 06:00:00"), -1.25},
      {date, std::string("2024-02-29"), 45351},
      {date, std::string("18:00"), 0.75},
      {date, std::string("6:00 PM"), 0.75},
      {date, std::string("12/31/99"), 36525},
      {date, std::string("1.1.29"), 47119},
      {date, std::string("1.1.30"), 10959},
      {date, std::string("2,5"), 2.5},
      {date, std::string("29.2.2023"), 0, 13},
      {date, std::string("1.1"), 0, 13},
      {date, std::string("24:00"), 0, 13},
      {date, std::string("1.1.2024 x"), 0, 13},
      {date, std::string("1.1-2024"), 0, 13},
      {date, 2958466.0, 0, 6},
      {date, -657435.0, 0, 6},
      {date, Null{}, 0, 94},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const Case& row = cases[i];
    double result = 0;
    EXPECT_EQ(error_number([&] { result = row.convert(row.value); }), row.number) << "row " << i;
    EXPECT_DOUBLE_EQ(result, row.expected) << "row " << i;
  }
}

TEST_F(Values, BecomeTextInTheUsersLocale) {
  struct Case {
    Value value;
    std::string german;
    std::string american;
  };
  const std::vector<Case> cases = {
      {true, "True", "True"},
      {int32_t{-5}, "-5", "-5"},
      {0.1f, "0,1", "0.1"},
      {5.6, "5,6", "5.6"},
      {date_from(2024, 3, 9), "09.03.2024", "3/9/2024"},
      {date_from(2024, 3, 9, 14, 5, 6), "09.03.2024 14:05:06", "3/9/2024 2:05:06 PM"},
      {Date{0.5}, "12:00:00", "12:00:00 PM"},
      {std::string("so"), "so", "so"},
  };
  for (const Case& row : cases) EXPECT_EQ(to_text(row.value), row.german);
  support::set_user_locale(support::user_locale_by_name("en_US").value());
  for (const Case& row : cases) EXPECT_EQ(to_text(row.value), row.american);
  EXPECT_EQ(to_date(std::string("3/9/2024")), date_from(2024, 3, 9)) << "the month first";
  EXPECT_EQ(error_number([] { to_text(Null{}); }), 94);
  support::UserLocale own_words = support::user_locale();
  own_words.names.morning = "vorm.";
  own_words.names.afternoon = "";
  support::set_user_locale(own_words);
  EXPECT_EQ(to_text(Date{0.25}) + ", " + to_text(Date{0.75}), "6:00:00 vorm., 6:00:00 PM");
}

}  // namespace
}  // namespace engine::test
