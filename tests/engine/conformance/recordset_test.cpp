#include <functional>
#include <limits>

#include "support/user_locale.h"
#include "tests/engine/conformance/conformance.h"

namespace engine::test {
namespace {

class Rows : public ConformanceTest {
 protected:
  Rows() : database_(create()) { add_things(*database_); }

  Database& database() { return *database_; }
  std::unique_ptr<Recordset> things() { return database_->open_recordset("things"); }
  void add(const std::vector<std::string>& names) {
    const auto rows = things();
    Transaction transaction{database()};
    for (const std::string& name : names) {
      rows->add_new();
      rows->set_value("name", name);
      rows->update();
    }
    transaction.commit();
  }
  std::vector<std::string> names(std::string_view source = "things") { return column(database(), source, "name"); }

 private:
  std::unique_ptr<Database> database_;
};

std::string text(Recordset& rows, std::string_view field) { return to_text(rows.value(field)); }

TEST_P(Rows, KeepEveryTypeExactly) {
  struct Case {
    std::string name;
    DataType type;
    std::vector<Value> values;
  };
  using std::int32_t;
  const std::vector<Case> cases = {
      {"b", DataType::Boolean, {true, false}},
      {"y", DataType::Byte, {int32_t{0}, int32_t{255}}},
      {"i", DataType::Integer, {int32_t{-32768}, int32_t{32767}}},
      {"l", DataType::Long, {std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}},
      {"s", DataType::Single, {0.1f, -3.4e38f}},
      {"d", DataType::Double, {0.1, -1.7e308, 5.0}},
      {"t", DataType::Date, {date_from(2024, 2, 29, 23, 59, 59), Date{0.25}, date_from(1899, 12, 29, 6)}},
      {"x", DataType::Text, {std::string("Größe 'ß\" €"), std::string("12"), std::string("a\0b", 3)}},
      {"m", DataType::Memo, {std::string(70000, 'm'), std::string()}},
  };
  const auto table = database().create_table_def("types");
  for (const Case& row : cases) {
    const auto field = table->create_field(row.name, row.type);
    field->set_allow_zero_length(true);
    table->fields().append(field);
  }
  database().table_defs().append(table);
  for (const Case& row : cases) {
    for (const Value& value : row.values) {
      const auto rows = database().open_recordset("types");
      rows->add_new();
      rows->set_value(row.name, value);
      EXPECT_EQ(rows->value(row.name), value);
      rows->update();
      const auto handle = open();
      const auto read = handle->open_recordset("types");
      read->move_last();
      EXPECT_EQ(read->value(row.name), value) << row.name;
      read->edit();
      read->set_value(row.name, Null{});
      read->update();
      const Value none = row.type == DataType::Boolean ? Value{false} : Value{Null{}};
      EXPECT_EQ(read->value(row.name), none) << "a Yes/No is never Null";
    }
  }
}

TEST_P(Rows, ConvertAndCheckWhatIsAssigned) {
  const auto table = database().create_table_def("checks");
  for (const auto& [name, type] : std::vector<std::pair<std::string, DataType>>{{"b", DataType::Boolean},
                                                                                {"y", DataType::Byte},
                                                                                {"i", DataType::Integer},
                                                                                {"l", DataType::Long},
                                                                                {"s", DataType::Single},
                                                                                {"t", DataType::Date},
                                                                                {"x", DataType::Text},
                                                                                {"m", DataType::Memo}}) {
    table->fields().append(table->create_field(name, type, 4));
  }
  database().table_defs().append(table);
  struct Case {
    std::string field;
    Value value;
    Value stored;
    int number = 0;
  };
  using std::int32_t;
  const Value none = Null{};
  const std::vector<Case> cases = {
      {"i", 2.5, int32_t{2}},
      {"i", 3.5, int32_t{4}},
      {"i", -2.5, int32_t{-2}},
      {"i", std::string(" 12,5 "), int32_t{12}},
      {"i", true, int32_t{-1}},
      {"i", 32767.4, int32_t{32767}},
      {"i", 32767.5, none, 3421},
      {"i", int32_t{-32769}, none, 3421},
      {"i", std::string("zwölf"), none, 3421},
      {"i", std::string(), none, 3421},
      {"y", int32_t{256}, none, 3421},
      {"y", int32_t{-1}, none, 3421},
      {"l", 2147483648.0, none, 3421},
      {"s", 1e39, none, 3421},
      {"s", 0.1, 0.1f},
      {"b", int32_t{5}, true},
      {"b", std::string("True"), true},
      {"b", std::string("vielleicht"), false, 3421},
      {"b", Null{}, false},
      {"t", std::string("29.2.2024 6:00"), date_from(2024, 2, 29, 6)},
      {"t", std::string("30.2.2024"), none, 3421},
      {"t", int32_t{2}, Date{2}},
      {"x", std::string("Äöüß"), std::string("Äöüß")},
      {"x", std::string("Äöüße"), none, 3163},
      {"x", std::string(), none, 3315},
      {"x", 12.5, std::string("12,5")},
      {"m", std::string(), none, 3315},
      {"m", Null{}, none},
      {"nothing", int32_t{1}, none, 3265},
  };
  const auto rows = database().open_recordset("checks");
  for (const Case& row : cases) {
    rows->add_new();
    EXPECT_EQ(error_number([&] { rows->set_value(row.field, row.value); }), row.number) << row.field;
    if (row.field != "nothing") {
      EXPECT_EQ(rows->value(row.field), row.stored) << row.field;
    }
  }
}

TEST_P(Rows, AreWalkedInBothDirections) {
  const auto empty = things();
  EXPECT_TRUE(empty->bof() && empty->eof());
  EXPECT_EQ(empty->record_count(), 0);
  for (const auto& move : {&Recordset::move_first, &Recordset::move_last, &Recordset::move_next,
                           &Recordset::move_previous, &Recordset::edit, &Recordset::delete_row}) {
    EXPECT_EQ(error_number([&] { (*empty.*move)(); }), 3021);
  }
  EXPECT_EQ(error_number([&] { empty->value("name"); }), 3021);
  add({"a", "b", "c"});
  const auto rows = things();
  EXPECT_EQ(rows->record_count(), 3);
  std::string walked;
  for (; !rows->eof(); rows->move_next()) walked += text(*rows, "name");
  EXPECT_EQ(error_number([&] { rows->move_next(); }), 3021);
  EXPECT_EQ(error_number([&] { rows->value("name"); }), 3021);
  for (rows->move_previous(); !rows->bof(); rows->move_previous()) walked += text(*rows, "name");
  EXPECT_EQ(error_number([&] { rows->move_previous(); }), 3021);
  rows->move_next();
  walked += text(*rows, "name");
  rows->move_last();
  walked += text(*rows, "name");
  rows->move_first();
  EXPECT_EQ(walked + text(*rows, "name"), "abccbaaca");
  rows->close();
  EXPECT_EQ(error_number([&] { rows->move_first(); }), 3420);
}

TEST_P(Rows, OfAQueryAreCountedAsTheyAreVisited) {
  add({"a", "b", "c"});
  EXPECT_EQ(database().open_recordset("SELECT name FROM things WHERE name = 'x'")->record_count(), 0);
  const auto rows = database().open_recordset("SELECT name FROM things");
  EXPECT_EQ(rows->record_count(), 1);
  rows->move_last();
  EXPECT_EQ(rows->record_count(), 3);
}

TEST_P(Rows, TooManyToReadAtOnceStayWholeWhileTheyChange) {
  std::vector<std::string> many;
  for (int i = 0; i < 1000; ++i) many.push_back(std::to_string(i));
  add(many);
  const auto rows = things();
  database().execute("UPDATE things SET name = 'x'");
  database().execute("DELETE FROM things WHERE id > 500");
  int count = 0;
  for (; !rows->eof(); rows->move_next()) {
    ASSERT_EQ(text(*rows, "name"), std::to_string(count++));
  }
  EXPECT_EQ(count, 1000);
}

TEST_P(Rows, ReadForwardOnlyAreTheSameRowsWhileTheyChange) {
  EXPECT_TRUE(database().open_forward_only("things")->eof());
  std::vector<std::string> many;
  for (int i = 0; i < 1000; ++i) many.push_back(std::to_string(i));
  add(many);
  const auto rows = database().open_forward_only("SELECT id, name FROM things ORDER BY id");
  int count = 0;
  for (; !rows->eof(); rows->move_next()) {
    ASSERT_EQ(text(*rows, "name"), std::to_string(count++));
    if (count == 300) database().execute("UPDATE things SET name = 'x'");
    if (count == 700) database().execute("DELETE FROM things WHERE id > 800");
  }
  EXPECT_EQ(count, 1000);
  EXPECT_EQ(error_number([&] { rows->value("name"); }), 3021);
  EXPECT_EQ(error_number([&] { rows->move_next(); }), 3021);
  rows->close();
  EXPECT_EQ(error_number([&] { rows->move_next(); }), 3420);
}

TEST_P(Rows, AddedGetTheirDefaultsAndTheirNumber) {
  add({"a", "b"});
  const auto rows = things();
  rows->move_next();
  rows->add_new();
  EXPECT_EQ(rows->value("id"), Value{3}) << "before the update";
  EXPECT_EQ(rows->value("amount"), Value{7});
  EXPECT_TRUE(is_null(rows->value("name")));
  EXPECT_EQ(error_number([&] { rows->set_value("id", 9); }), 3164);
  rows->set_value("name", std::string("c"));
  rows->update();
  EXPECT_EQ(text(*rows, "name"), "b") << "the row before is current again";
  EXPECT_EQ(rows->record_count(), 3);
  rows->move_last();
  EXPECT_EQ(rows->value("id"), Value{3});
  rows->delete_row();
  add({"d"});
  EXPECT_THAT(column(database(), "things", "id"), ElementsAre("1", "2", "4"));
}

TEST_P(Rows, AreEditedInPlace) {
  add({"a", "b"});
  const auto rows = things();
  EXPECT_EQ(error_number([&] { rows->update(); }), 3020);
  EXPECT_EQ(error_number([&] { rows->cancel_update(); }), 3020);
  EXPECT_EQ(error_number([&] { rows->set_value("name", std::string("x")); }), 3020);
  rows->edit();
  rows->set_value("name", std::string("x"));
  rows->cancel_update();
  EXPECT_EQ(text(*rows, "name"), "a");
  rows->edit();
  rows->set_value("name", std::string("x"));
  rows->move_next();
  EXPECT_EQ(error_number([&] { rows->update(); }), 3020) << "moving gives the edit up";
  rows->edit();
  rows->set_value("name", std::string("y"));
  rows->set_value("amount", Null{});
  rows->update();
  EXPECT_EQ(text(*rows, "name"), "y");
  EXPECT_THAT(names(), ElementsAre("a", "y"));
  EXPECT_THAT(column(database(), "things", "amount"), ElementsAre("7", "NULL"));
}

TEST_P(Rows, ThatAreRefusedLeaveTheEditOpen) {
  add({"a", "b"});
  const auto table = database().table_defs().item("things");
  table->fields().item("name")->set_required(true);
  const auto index = table->create_index("u");
  index->fields().append(index->create_field("name"));
  index->set_unique(true);
  table->indexes().append(index);
  const auto rows = things();
  rows->add_new();
  EXPECT_EQ(error_number([&] { rows->update(); }), 3314);
  rows->set_value("name", std::string("B"));
  EXPECT_EQ(error_number([&] { rows->update(); }), 3022);
  rows->set_value("name", std::string("c"));
  rows->update();
  rows->edit();
  rows->set_value("name", Null{});
  EXPECT_EQ(error_number([&] { rows->update(); }), 3314);
  rows->set_value("name", std::string("c"));
  EXPECT_EQ(error_number([&] { rows->update(); }), 3022);
  rows->cancel_update();
  EXPECT_EQ(text(*rows, "name"), "a");
  EXPECT_THAT(names(), ElementsAre("a", "b", "c"));
}

TEST_P(Rows, ThatWereDeletedAreGone) {
  add({"a", "b", "c"});
  const auto rows = things();
  const auto behind = things();
  rows->move_next();
  rows->delete_row();
  EXPECT_EQ(rows->record_count(), 2);
  EXPECT_EQ(error_number([&] { rows->value("name"); }), 3167);
  EXPECT_EQ(error_number([&] { rows->delete_row(); }), 3167);
  rows->move_previous();
  EXPECT_EQ(text(*rows, "name"), "a");
  rows->move_next();
  EXPECT_EQ(text(*rows, "name"), "c");
  behind->move_next();
  behind->edit();
  behind->set_value("amount", 1);
  EXPECT_EQ(error_number([&] { behind->update(); }), 3167);
  EXPECT_EQ(error_number([&] { behind->delete_row(); }), 3167);
  EXPECT_THAT(names(), ElementsAre("a", "c"));
}

TEST_P(Rows, OfAQueryOverOneTableAreUpdated) {
  add({"a", "b", "c"});
  const auto rows = database().open_recordset("SELECT amount * 2 AS twice, name FROM things WHERE name > 'a'");
  ASSERT_TRUE(rows->updatable());
  rows->edit();
  rows->set_value("name", std::string("B2"));
  EXPECT_EQ(error_number([&] { rows->set_value("twice", 1); }), 3164);
  EXPECT_EQ(error_number([&] { rows->set_value("id", 1); }), 3265);
  rows->update();
  rows->move_next();
  rows->delete_row();
  rows->add_new();
  rows->set_value("name", std::string("d"));
  rows->update();
  rows->move_last();
  EXPECT_EQ(text(*rows, "name"), "d");
  EXPECT_THAT(names(), ElementsAre("a", "B2", "d"));
  EXPECT_THAT(column(database(), "things", "amount"), ElementsAre("7", "7", "7")) << "defaults of fields not selected";
  const auto counted = database().open_recordset("SELECT count(*) AS n FROM things");
  EXPECT_FALSE(counted->updatable());
  EXPECT_EQ(error_number([&] { counted->edit(); }), 3027);
  EXPECT_EQ(error_number([&] { counted->add_new(); }), 3027);
  EXPECT_EQ(counted->value("n"), Value{3});
}

TEST_P(Rows, AreNotWhatAChangeGives) {
  add({"a"});
  EXPECT_EQ(error_number([&] { database().open_recordset("DELETE FROM things"); }), 3219);
  EXPECT_THAT(names(), ElementsAre("a"));
}

TEST_P(Rows, TellTheirColumns) {
  const auto rows = things();
  ASSERT_EQ(rows->field_count(), 4);
  EXPECT_EQ(rows->field_name(3), "note");
  EXPECT_EQ(rows->field_type(3), DataType::Memo);
  EXPECT_EQ(error_number([&] { rows->field_name(4); }), 3265);
  EXPECT_EQ(error_number([&] { rows->value(-1); }), 3265);
  EXPECT_EQ(database().open_recordset(" [Things]\r\n")->field_count(), 4);
}

INSTANTIATE_TEST_SUITE_P(Engine, Rows, testing::ValuesIn(engines_under_test()), name_of_engine);

}  // namespace
}  // namespace engine::test
