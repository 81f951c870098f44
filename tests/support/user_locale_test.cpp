#include "support/user_locale.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/host.h"
#include "support/measured_value.h"

namespace support {
namespace {

/// Sets a locale by its name, for one test.
class InLocale {
 public:
  explicit InLocale(std::string_view name) : before_(user_locale()) {
    const auto locale = user_locale_by_name(name);
    EXPECT_TRUE(locale) << name;
    if (locale) set_user_locale(*locale);
  }
  InLocale(const InLocale&) = delete;
  InLocale& operator=(const InLocale&) = delete;
  ~InLocale() { set_user_locale(before_); }

 private:
  UserLocale before_;
};

TEST(UserLocale, IsFoundByNameWithAndWithoutEncoding) {
  EXPECT_EQ(user_locale_by_name("de")->decimal_separator, ',');
  EXPECT_EQ(user_locale_by_name("de_DE.UTF-8")->short_date, "dd.MM.yyyy");
  EXPECT_EQ(user_locale_by_name("en_GB@euro")->short_date, "dd/MM/yyyy");
  EXPECT_FALSE(user_locale_by_name("tlh"));
  EXPECT_FALSE(user_locale_by_name(""));
}

TEST(UserLocale, OfTheHostCanBeUsed) {
  const UserLocale locale = host_locale();
  EXPECT_TRUE(locale.decimal_separator == ',' || locale.decimal_separator == '.');
  EXPECT_NE(locale.decimal_separator, locale.thousands_separator);
  for (const char letter : {'d', 'M', 'y'}) EXPECT_NE(locale.short_date.find(letter), std::string::npos);
}

struct NumberRow {
  std::string_view locale;
  std::string_view text;
  std::optional<double> number;
};

TEST(ParseNumber, TakesWhatTheLocaleWritesAndRefusesTheRest) {
  constexpr auto no_number = std::nullopt;
  const NumberRow rows[] = {
      {"de", "5,6", 5.6},
      {"de", " 120 ", 120},
      {"de", "-0,5", -0.5},
      {"de", "+7", 7},
      {"de", ",5", 0.5},
      {"de", "5,", 5},
      {"de", "1e3", 1000},
      {"de", "1,5E-1", 0.15},
      {"de", "1.234", 1234},
      {"de", "1.234,5", 1234.5},
      {"de", "12.345.678", 12345678},
      {"de", "5.6", no_number},
      {"de", "5.600,", 5600},
      {"de", "1234.567", no_number},
      {"de", "1.23.456", no_number},
      {"de", ".500", no_number},
      {"de", "1,234.5", no_number},
      {"de", "1..234", no_number},
      {"de", "1.", no_number},
      {"de", "", no_number},
      {"de", " ", no_number},
      {"de", "-", no_number},
      {"de", ",", no_number},
      {"de", "1 2", no_number},
      {"de", "12x", no_number},
      {"de", "1e", no_number},
      {"de", "1e+", no_number},
      {"de", "1e999", no_number},
      {"de", "nan", no_number},
      {"de", "0x10", no_number},
      {"de", "--1", no_number},
      {"de", "\xC2\xBD", no_number},
      {"en_US", "5.6", 5.6},
      {"en_US", "1,234.5", 1234.5},
      {"en_US", "5,6", no_number},
      {"fr", "1 234,5", 1234.5},
      {"de_CH", "1'234.5", 1234.5},
      {"C", "1,234", no_number},
      {"C", "5.6", 5.6},
  };
  for (const NumberRow& row : rows) {
    const InLocale locale(row.locale);
    EXPECT_EQ(parse_number(row.text), row.number) << row.locale << " \"" << row.text << "\"";
  }
}

TEST(NumberText, IsTheShortestThatReadsBack) {
  EXPECT_EQ(number_text(5.6), "5,6");
  EXPECT_EQ(number_text(5.6F), "5,6");
  EXPECT_EQ(number_text(100000.0), "100000");
  EXPECT_EQ(number_text(-0.5), "-0,5");
  EXPECT_EQ(number_text(-0.0), "0");
  EXPECT_EQ(number_text(1.0 / 3), "0,3333333333333333");
  EXPECT_EQ(number_text(1e20), "1E+20");
  EXPECT_EQ(number_text(1.5e-7), "1,5E-07");
  EXPECT_EQ(parse_number(number_text(std::numeric_limits<double>::max())), std::numeric_limits<double>::max());
  const InLocale locale("en_US");
  EXPECT_EQ(number_text(1234.5), "1234.5");
}

struct FixedRow {
  double value;
  int decimals;
  std::string_view text;
};

TEST(FixedText, RoundsHalvesAwayFromZeroAsTheUserReadsTheNumber) {
  const FixedRow rows[] = {
      {5.55, 1, "5,6"},    {100 * 0.0555, 1, "5,6"},
      {-5.55, 1, "-5,6"},  {5.54, 1, "5,5"},
      {0.05, 1, "0,1"},    {0.04, 1, "0,0"},
      {-0.04, 1, "0,0"},   {0.5, 0, "1"},
      {2.5, 0, "3"},       {0.4, 0, "0"},
      {9.995, 2, "10,00"}, {999.95, 1, "1000,0"},
      {0, 2, "0,00"},      {120, 1, "120,0"},
      {1.005, 2, "1,01"},  {0.001, 1, "0,0"},
      {0.095, 1, "0,1"},   {1e15, 1, "1000000000000000,0"},
      {7, -3, "7"},        {0.1, 99, "0,100000000000000"},
  };
  for (const FixedRow& row : rows) EXPECT_EQ(fixed_text(row.value, row.decimals), row.text) << row.value;
}

struct DateRow {
  double day;
  std::string_view picture;
  std::string_view text;
};

TEST(ShortDateText, WritesDaysByThePicture) {
  const DateRow rows[] = {
      {0, "dd.MM.yyyy", "30.12.1899"},
      {36526, "dd.MM.yyyy", "01.01.2000"},
      {36585.99, "dd.MM.yyyy", "29.02.2000"},
      {36526, "M/d/yyyy", "1/1/2000"},
      {36526, "d.M.yy", "1.1.00"},
      {36526, "yyyy-MM-dd", "2000-01-01"},
      {-1.25, "dd.MM.yyyy", "29.12.1899"},
      {2958465, "dd.MM.yyyy", "31.12.9999"},
      {-657434, "dd.MM.yyyy", "01.01.0100"},
      {36526, "d 'de' M", "1 de 1"},
      {2958466, "dd.MM.yyyy", ""},
      {-1e300, "dd.MM.yyyy", ""},
      {std::numeric_limits<double>::quiet_NaN(), "dd.MM.yyyy", ""},
  };
  const UserLocale before = user_locale();
  for (const DateRow& row : rows) {
    set_user_locale({',', '.', std::string(row.picture), {}});
    EXPECT_EQ(short_date_text(row.day), row.text) << row.day;
  }
  set_user_locale(before);
}

TEST(Glucose, ConvertsByTheTwoFactorsThatAreNotReciprocals) {
  EXPECT_EQ(to_mg_dl(5.6), "101");
  EXPECT_EQ(to_mmol_l(100), "5,6");
  EXPECT_EQ(to_mmol_l(180), "10");
  EXPECT_EQ(to_mg_dl(0), "0");
  EXPECT_EQ(to_mg_dl(2000), "");  // no 16-bit number
  EXPECT_EQ(to_mg_dl(std::numeric_limits<double>::quiet_NaN()), "");
  EXPECT_EQ(round_half_even(2.5), 2);
  EXPECT_EQ(round_half_even(-3.5), -4);
}

TEST(FormatValue, ShowsDecimalsAndUnitByKind) {
  EXPECT_EQ(format_value(100, ValueKind::MgDl, 0, true), "100 mg/dL");
  EXPECT_EQ(format_value(5.55, ValueKind::MmolL, 1, true), "5,6 mmol/L");
  EXPECT_EQ(format_value(7.2, ValueKind::Percent, 2, true), "7,20 %");
  EXPECT_EQ(format_value(80, ValueKind::Kilogram, 0, false), "80,0");
  EXPECT_EQ(format_value(12, ValueKind::Gram, 0, true), "12 g");
  EXPECT_EQ(format_value(12, ValueKind::MgL, 0, true), "12 mg/l");
  EXPECT_EQ(format_value(150, ValueKind::Pound, 1, true), "150,0 lbs");
  EXPECT_EQ(format_value(-1, ValueKind::MmolL, 2, false), "-1");
}

}  // namespace
}  // namespace support
