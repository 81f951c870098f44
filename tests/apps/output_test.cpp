// JSON and tables, and how both show the engine's values.
#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "apps/patientdb/value_output.h"

namespace {

std::string json_of(const engine::Value& value) {
  std::ostringstream out;
  support::JsonWriter json(out);
  patientdb::write_json(json, value);
  return out.str();
}

TEST(JsonWriter, SetsCommasAndNesting) {
  std::ostringstream out;
  support::JsonWriter json(out);
  json.begin_object().key("a").begin_array().integer(1).begin_array().end_array().text("x").end_array();
  json.key("b").begin_object().end_object().key("c").boolean(false).key("d").null().end_object();
  EXPECT_EQ(out.str(), R"({"a":[1,[],"x"],"b":{},"c":false,"d":null})");
}

TEST(ValueOutput, ShowsEachKindInJsonAndAsACell) {
  struct Case {
    engine::Value value;
    std::string json, cell;
  };
  // Numbers are written without an exponent as long as that is readable.
  for (const auto& [number, text] : {std::pair{100000.0, "100000"},
                                     {1e14, "100000000000000"},
                                     {-2e6, "-2000000"},
                                     {1e15, "1e+15"},
                                     {0.00002, "0.00002"},
                                     {1e-6, "1e-06"},
                                     {-0.0, "0"}}) {
    EXPECT_EQ(json_of(number), text);
  }
  const Case cases[] = {
      {engine::Null{}, "null", ""},
      {100000.0f, "100000", "100000"},
      {1e15f, "1e+15", "1e+15"},
      {true, "-1", "-1"},
      {false, "0", "0"},
      {std::int32_t{-2147483647 - 1}, "-2147483648", "-2147483648"},
      {5.6f, "5.6", "5.6"},
      {5.0, "5", "5"},
      {-0.0, "0", "0"},
      {0.1, "0.1", "0.1"},
      {1.0 / 3, "0.3333333333333333", "0.3333333333333333"},
      {std::numeric_limits<double>::infinity(), "null", "null"},
      {engine::date_from(2024, 2, 29, 7, 5, 0), R"("2024-02-29 07:05:00")", "2024-02-29 07:05:00"},
      {std::string("Grüße \"A\\B\"\r\n\t\x01"), R"("Grüße \"A\\B\"\r\n\t\u0001")", "Grüße \"A\\B\"\r\n\t\x01"},
      {std::string("a\xFF"), "\"a\uFFFD\"", "a\xFF"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(json_of(row.value), row.json);
    EXPECT_EQ(patientdb::cell(row.value), row.cell);
  }
}

TEST(TextTable, ShowsControlCharactersAsEscapes) {
  struct Case {
    std::string_view text, shown;
  };
  const Case cases[] = {
      {"two\r\nlines", "two\\r\\nlines"},
      {"\ta\x1b[2J\x7f", "\\ta\\u001b[2J\\u007f"},
      {std::string_view("a\0b", 3), "a\\u0000b"},
      // U+009B begins a command to the terminal, as ESC [ does. U+00A0 is the first harmless character behind these.
      {"\xC2\x80\xC2\x9B\xC2\x9F\xC2\xA0", "\\u0080\\u009b\\u009f\xC2\xA0"},
      {"C:\\new", "C:\\new"},
      {"a\x9B", "a\uFFFD"},
  };
  for (const Case& row : cases) EXPECT_EQ(console::one_line(row.text), row.shown);
}

TEST(TextTable, AlignsByCharactersAndKeepsARowOnALine) {
  console::TextTable table;
  table.add_column("Größe");
  table.add_column("n", console::TextTable::Align::Right);
  table.add_row({"öä", "1"});
  table.add_row({"two\r\nlines\x1b[2J", "100"});
  std::ostringstream out;
  table.write(out);
  EXPECT_EQ(out.str(),
            "Größe                    n\n"
            "---------------------  ---\n"
            "öä                       1\n"
            "two\\r\\nlines\\u001b[2J  100\n");
}

}  // namespace
