// Format, tested by what its documentation says about each name and placeholder. The settings are German unless a row
// names others.
#include "database/engine/format/format.h"

#include <gtest/gtest.h>

#include <span>

#include "support/error.h"
#include "support/user_locale.h"
#include "tests/jet_sql/sql_database.h"

namespace jet_sql_test {
namespace {

struct FormatRow {
  const char* value;
  const char* picture;
  const char* text;
};

constexpr FormatRow number_rows[] = {
    {"0.85", "0.0", "0,9"},
    {"7.25", "0.0", "7,3"},
    {"5.25", "0.0", "5,3"},
    {"5.55", "0.0", "5,6"},
    {"-5.55", "0.0", "-5,6"},
    {"2.5", "0", "3"},
    {"0.5", "0", "1"},
    {"0.4", "0", "0"},
    {"-0.4", "0", "0"},
    {"1.005", "0.00", "1,01"},
    {"0.285", "0.00", "0,29"},
    {"2.675", "0.00", "2,68"},
    {"9.995", "0.00", "10,00"},
    {"99.96", "0.0", "100,0"},
    {"0", "0", "0"},
    {"0", "0.00", "0,00"},
    {"-5", "0.00", "-5,00"},
    {"42", "000000", "000042"},
    {"1234567", "000", "1234567"},
    {"5", "0.", "5,"},
    {"5", "#", "5"},
    {"0", "#", ""},
    {"0", "#.##", ","},
    {"0.5", "#.##", ",5"},
    {"0.5", ".00", ",50"},
    {"12.5", ".00", "12,50"},
    {"5", "#.##", "5,"},
    {"5.1", "0.0##", "5,1"},
    {"5", "0.0##", "5,0"},
    {"5.1234", "0.0##", "5,123"},
    {"5.1", "0.#0#", "5,10"},
    {"7", "#0#", "07"},
    {"5.6", "#,##0", "6"},
    {"1234", "#,##0", "1.234"},
    {"123", "#,##0", "123"},
    {"1234567.891", "#,##0.00", "1.234.567,89"},
    {"-1234567.891", "#,##0.00", "-1.234.567,89"},
    {"5", "0,000", "0.005"},
    {"1234567", "#,#", "1.234.567"},
    {"1234567", "#,,#", "1.234.567"},
    {"1234567", "0,0,0", "1.234.567"},
    {"100000000", "##0,,", "100"},
    {"123456789", "0,", "123457"},
    {"1234567", "0,.0", "1234,6"},
    {"1234567", "#,##0,", "1.235"},
    {"999999", "0,,", "1"},
    {"400000", "0,,", "0"},
    {"1234567890", "#,##0,,.00", "1.234,57"},
    {"0.256", "0%", "26%"},
    {"0.285", "0%", "29%"},
    {"0.256", "0.0%", "25,6%"},
    {"-0.5", "0%", "-50%"},
    {"1.5", "%0", "%150"},
    {"0.5", "0 \\%", "1 %"},
    {"5", "0 \"mg/dl\"", "5 mg/dl"},
    {"5", "0 \\m\\g", "5 mg"},
    {"5", "\"Wert: \"0", "Wert: 5"},
    {"-5", "\"Wert: \"0", "-Wert: 5"},
    {"5", "0 €", "5 €"},
    {"5", "$0", "$5"},
    {"5", "+0", "+5"},
    {"5", "(0)", "(5)"},
    {"5", "0-", "5-"},
    {"5", "1 0", "1 5"},
    {"5", "= 0 |", "= 5 |"},
    {"5", "0 \"ä;;\"", "5 ä;;"},
    {"123456", "000-000", "123-456"},
    {"12", "000-000", "000-012"},
    {"1234567", "000-000", "1234-567"},
    {"123456789", "###-###", "123456-789"},
    {"12.345", "0.0\"x\"00", "12,3x45"},
    {"1530", "00:00", "15:30"},
    {"1", "0;-0;\"none\"", "1"},
    {"0", "0;-0;\"none\"", "none"},
    {"-2", "0;(0)", "(2)"},
    {"2", "0;(0)", "2"},
    {"0", "0;(0)", "0"},
    {"-2", "0;;\"z\"", "-2"},
    {"0", "0;;\"z\"", "z"},
    {"0", "0.0;-0.0;", "0,0"},
    {"5", "$#,##0;;\\Z\\e\\r\\o", "$5"},
    {"-5", "$#,##0;;\\Z\\e\\r\\o", "-$5"},
    {"0", "$#,##0;;\\Z\\e\\r\\o", "Zero"},
    {"-0.1", "0;(0)", "(0)"},
    {"5", "0;-0;\"z\";\"leer\"", "5"},
    {"NULL", "0;-0;\"z\";\"leer\"", "leer"},
    {"NULL", "0;-0;\"z\"", nullptr},
    {"NULL", "0", nullptr},
    {"NULL", "Fixed", nullptr},
    {"NULL", "dd", nullptr},
    {"12345", "0.00E+00", "1,23E+04"},
    {"12355", "0.00E+00", "1,24E+04"},
    {"0.00012345", "0.00E+00", "1,23E-04"},
    {"12345", "0.00E-00", "1,23E04"},
    {"0.00012345", "0.00e-00", "1,23e-04"},
    {"-12345", "0.0e+0", "-1,2e+4"},
    {"9.996", "0.00E+00", "1,00E+01"},
    {"0", "0.00E+00", "0,00E+00"},
    {"1e100", "0E+0", "1E+100"},
    {"5", "#.##E+00", "5,E+00"},
    {"1e20", "0", "100000000000000000000"},
    {"1e20", "#,##0", "100.000.000.000.000.000.000"},
    {"1e-20", "0.00", "0,00"},
    {"1/3", "0.00000000000000000000", "0,33333333333333300000"},
    {"5.6", "Fixed", "5,60"},
    {"3", "fixed", "3,00"},
    {"1234567.891", "Standard", "1.234.567,89"},
    {"0.256", "Percent", "25,60%"},
    {"12345.678", "Scientific", "1,23E+04"},
    {"5.6", "General Number", "5,6"},
    {"100000", "General Number", "100000"},
    {"1234567.5", "General Number", "1234567,5"},
    {"0.1+0.2", "General Number", "0,3"},
    {"1234.5", "Currency", "1.234,50 €"},
    {"-1234.5", "Currency", "-1.234,50 €"},
    {"-0.001", "Currency", "0,00 €"},
    {"0", "Yes/No", "No"},
    {"5", "yes/no", "Yes"},
    {"-1", "True/False", "True"},
    {"0", "True/False", "False"},
    {"1", "On/Off", "On"},
    {"0", "On/Off", "Off"},
    {"TRUE", "0", "-1"},
    {"TRUE", "Yes/No", "Yes"},
    {"5.6", "", "5,6"},
    {"-0.5", "", "-0,5"},
    {"100000", "", "100000"},
    {"1e15", "", "1E+15"},
    {"#1/1/2000#", "0", "36526"},
    {"#1/1/2000 12:00#", "0.0", "36526,5"},
    {"'5,25'", "0.0", "5,3"},
    {"'x'", "0", "x"},
    {"'x'", "Fixed", "x"},
    {"''", "0", ""},
};

// Thursday.
constexpr const char* evening = "#3/7/2024 18:05:09#";
constexpr FormatRow date_rows[] = {
    {evening, "d", "7"},
    {evening, "dd", "07"},
    {evening, "ddd", "Do"},
    {evening, "dddd", "Donnerstag"},
    {evening, "ddddd", "07.03.2024"},
    {evening, "dddddd", "Donnerstag, 7. März 2024"},
    {evening, "aaaa", "Donnerstag"},
    {evening, "w", "5"},
    {evening, "ww", "10"},
    {evening, "m", "3"},
    {evening, "mm", "03"},
    {evening, "mmm", "Mrz"},
    {evening, "mmmm", "März"},
    {evening, "oooo", "März"},
    {evening, "q", "1"},
    {"#10/1/2024#", "q", "4"},
    {evening, "y", "67"},
    {"#12/31/2024#", "y", "366"},
    {evening, "yy", "24"},
    {evening, "yyyy", "2024"},
    {"#1/1/2005#", "yy", "05"},
    {evening, "h", "18"},
    {"#3/7/2024 6:05:09#", "h", "6"},
    {"#3/7/2024 6:05:09#", "hh", "06"},
    {evening, "n", "5"},
    {evening, "nn", "05"},
    {evening, "s", "9"},
    {evening, "ss", "09"},
    {evening, "ttttt", "18:05:09"},
    {evening, "c", "07.03.2024 18:05:09"},
    {"#3/7/2024#", "c", "07.03.2024"},
    {"#18:05:09#", "c", "18:05:09"},
    {evening, "h AM/PM", "6 PM"},
    {evening, "hh:nn am/pm", "06:05 pm"},
    {evening, "h:nnA/P", "6:05P"},
    {evening, "h:nna/p", "6:05p"},
    {evening, "h:nn AMPM", "6:05 "},
    {"#0:05:00#", "h AM/PM", "12 AM"},
    {"#12:05:00#", "h AM/PM", "12 PM"},
    {"#11:59:59#", "AM/PM h", "AM 11"},
    {evening, "dd.mm.yyyy hh:nn:ss", "07.03.2024 18:05:09"},
    {evening, "DD.MM.YYYY HH:MM", "07.03.2024 18:05"},
    {evening, "hh:mm", "18:05"},
    {evening, "h.mm", "18.05"},
    {evening, "mm:ss", "03:09"},
    {evening, "hh:mm mm", "18:05 03"},
    {evening, "hh mmmm", "18 März"},
    {evening, "d/m/yy", "7.3.24"},
    {evening, "m\\/d\\/yy", "3/7/24"},
    {evening, "yyyy-mm-dd", "2024-03-07"},
    {evening, "ddmmyyyy", "07032024"},
    {evening, "dddd, d. mmmm yyyy", "Donnerstag, 7. März 2024"},
    {evening, "\"am\" d.m.", "am 7.3."},
    {evening, "hh\\h nn\\m", "18h 05m"},
    {evening, "hh\"h\"nn", "18h05"},
    {evening, "General Date", "07.03.2024 18:05:09"},
    {evening, "Long Date", "Donnerstag, 7. März 2024"},
    {evening, "Medium Date", "07-Mrz-24"},
    {evening, "Short Date", "07.03.2024"},
    {evening, "Long Time", "18:05:09"},
    {evening, "Medium Time", "06:05 PM"},
    {evening, "Short Time", "18:05"},
    {evening, "short time", "18:05"},
    {evening, "", "07.03.2024 18:05:09"},
    {"#1/1/1800 6:00#", "dddd hh", "Mittwoch 06"},
    {"#12/29/1899 18:30:00#", "Short Date", "29.12.1899"},
    {"45358", "dd.mm.yyyy", "07.03.2024"},
    {"45358.75", "hh:nn", "18:00"},
    {"0", "Short Date", "30.12.1899"},
    {"'7.3.2024'", "yyyy", "2024"},
    {"'45358'", "yyyy", "2024"},
    {"'bald'", "yyyy", "bald"},
    {"'bald'", "Short Date", "bald"},
};

constexpr FormatRow text_rows[] = {
    {"'abc'", "@", "abc"},
    {"'abc'", "@@@@@", "  abc"},
    {"'abc'", "!@@@@@", "abc  "},
    {"'abc'", "&&&&&", "abc"},
    {"'abc'", "!&&&&&", "abc"},
    {"'abcdef'", "@@@", "abcdef"},
    {"'abcdef'", "!@@@", "abcdef"},
    {"'Abc Äö'", ">", "ABC ÄÖ"},
    {"'Abc Äö'", "<", "abc äö"},
    {"'Abc'", ">@@@@@", "  ABC"},
    {"'Abc'", "<!@@@@@", "abc  "},
    {"'1234567'", "@@@-@@@@", "123-4567"},
    {"'123'", "@@-@@", " 1-23"},
    {"'123'", "&&-&&", "1-23"},
    {"'123'", "!@@-@@", "12-3 "},
    {"'abc'", "(@@@)", "(abc)"},
    {"'abcd'", "(@@@)", "(abcd)"},
    {"'abc'", "\"x\"@@@\\y", "xabcy"},
    {"'Äö'", "@@@", " Äö"},
    {"5", "@@@", "  5"},
    {"5.6", "@@@@@", "  5,6"},
    {"#3/7/2024#", "@@@@@@@@@@@@", "  07.03.2024"},
    {"''", "@@", "  "},
    {"''", "@@;\"leer\"", "leer"},
    {"NULL", "@@;\"leer\"", "leer"},
    {"'a'", "@@;\"leer\"", " a"},
    {"NULL", "@@", nullptr},
    {"'x'", "", "x"},
};

std::string in_sql(const char* value, const char* picture) {
  std::string quoted;
  for (const char character : std::string(picture)) quoted.append(character == '\'' ? 2 : 1, character);
  return std::string("SELECT format(") + value + ", '" + quoted + "')";
}

class Format : public testing::Test {
 protected:
  Format() { support::set_user_locale(*support::user_locale_by_name("de")); }
  ~Format() override { support::set_user_locale(*support::user_locale_by_name("de")); }

  void expect(std::span<const FormatRow> rows) {
    for (const FormatRow& row : rows) {
      SCOPED_TRACE(in_sql(row.value, row.picture));
      const std::string wanted = row.text != nullptr ? "'" + std::string(row.text) + "'" : "Null";
      try {
        EXPECT_EQ(wanted, database.value(in_sql(row.value, row.picture)));
      } catch (const support::RuntimeError& error) {
        ADD_FAILURE() << error.what();
      }
    }
  }

  SqlDatabase database;
};

TEST_F(Format, PrintsNumbers) { expect(number_rows); }
TEST_F(Format, PrintsDates) { expect(date_rows); }
TEST_F(Format, PrintsTexts) { expect(text_rows); }

TEST_F(Format, RefusesWhatItDoesNotKnow) {
  constexpr std::pair<const char*, const char*> rows[] = {
      {"5", "0 mg"},        {"5", "0 x"},       {"5", "0 e"},          {"5", "0 ä"},      {"5", "0.0.0"},
      {"5", "0%%"},         {"5", "0.0,"},      {"5", ",0"},           {"5", "."},        {"5", "00.0E+00"},
      {"5", "#,##0.0E+0"},  {"5", "0.0E+"},     {"5", "0E+0E+0"},      {"5", "0E+0.0"},   {"5", "0;0;0;0;0"},
      {"5", ";0"},          {"5", "0;x"},       {"5", "\"open"},       {"5", "0\\"},      {"NULL", "0;0;0;0"},
      {evening, "ddddddd"}, {evening, "hhh"},   {evening, "nnn"},      {evening, "sss"},  {evening, "mmmmm"},
      {evening, "yyy"},     {evening, "www"},   {evening, "qq"},       {evening, "t"},    {evening, "tttt"},
      {evening, "cc"},      {evening, "Uhr"},   {evening, "dd.mm. x"}, {evening, "a"},    {evening, "o"},
      {evening, "d 0"},     {evening, "dd;mm"}, {evening, "p"},        {evening, "Long"}, {"5", "Short"},
      {"'a'", "@ x"},       {"'a'", "@0"},      {"'a'", "<>"},         {"'a'", "@;@;@"},  {"'abcde'", "@@-@@"},
      {"'a'", "@ü"},
  };
  for (const auto& [value, picture] : rows) {
    EXPECT_EQ(5, database.error(in_sql(value, picture))) << in_sql(value, picture);
  }
  EXPECT_EQ(6, database.error("SELECT format(3000000, 'dd.mm.yyyy')"));
  EXPECT_EQ(5, database.error("SELECT format(5, '" + std::string(300, '0') + "')"));
  EXPECT_EQ(5, database.error("SELECT format(5, 'w', 9)"));
}

TEST_F(Format, CountsWeeksAsAsked) {
  constexpr std::pair<const char*, const char*> rows[] = {
      {"format(#3/10/2024#, 'w', 2)", "'7'"},
      {"format(#3/10/2024#, 'w', 1)", "'1'"},
      {"format(#12/30/2024#, 'ww', 2, 2)", "'1'"},
      {"format(#12/30/2024#, 'ww')", "'53'"},
      {"format(#1/1/2023#, 'ww', 2, 2)", "'52'"},
      {"format(#1/1/2023#, 'ww', 0, 0)", "'1'"},
      {"format(5, '0', NULL)", "Null"},
      {"format(5, NULL)", "Null"},
      {"format(s, '0.00')", "'5,60'"},
      {"format(s)", "'5,6'"},
  };
  database.run("CREATE TABLE t (s SINGLE)");
  database.run("INSERT INTO t VALUES (5.6)");
  for (const auto& [call, text] : rows) {
    EXPECT_EQ(text, database.value(std::string("SELECT ") + call + " FROM t")) << call;
  }
}

TEST_F(Format, FollowsTheUsersLocale) {
  struct Row {
    const char* locale;
    engine::Value value;
    const char* picture;
    const char* text;
  };
  const engine::Date date{45358.75379629630};
  const Row rows[] = {
      {"en_US", 1234567.891, "#,##0.00", "1,234,567.89"},
      {"en_US", -1234.5, "Currency", "($1,234.50)"},
      {"en_US", 1234.5, "Currency", "$1,234.50"},
      {"en_US", date, "Long Date", "Thursday, March 7, 2024"},
      {"en_US", date, "Short Date", "3/7/2024"},
      {"en_US", date, "Long Time", "6:05:28 PM"},
      {"en_US", date, "d/m/yy h:nn AMPM", "7/3/24 6:05 PM"},
      {"en_US", date, "ddd mmm", "Thu Mar"},
      {"en_GB", date, "Long Date", "07 March 2024"},
      {"en_GB", -1.5, "Currency", "-£1.50"},
      {"de_CH", 1234.5, "Standard", "1'234.50"},
      {"de_CH", 1234.5, "Currency", "CHF 1'234.50"},
      {"de_AT", 1234.5, "Currency", "€ 1.234,50"},
      {"fr", date, "dddd d mmmm", "jeudi 7 mars"},
      {"C", 1234.5, "#,##0.0", "1234.5"},
      {"C", 1234.5, "Currency", "1234.50"},
      {"de", 5.6F, "", "5,6"},
      {"de", std::int32_t{7}, "00", "07"},
      {"de", true, "On/Off", "On"},
      {"de", engine::Null{}, "0", ""},
  };
  for (const Row& row : rows) {
    support::set_user_locale(*support::user_locale_by_name(row.locale));
    EXPECT_EQ(row.text, engine::format(row.value, row.picture)) << row.locale << " " << row.picture;
  }
}

}  // namespace
}  // namespace jet_sql_test
