#include <functional>

#include "tests/engine/conformance/conformance.h"

namespace engine::test {
namespace {

class Layout : public ConformanceTest {};

std::vector<std::string> field_names(Database& database, std::string_view table) {
  std::vector<std::string> names;
  const auto definition = database.table_defs().item(table);
  for (std::int32_t i = 0; i < definition->fields().count(); ++i) {
    names.push_back(definition->fields().item(i)->name());
  }
  return names;
}

/// Appends an index on fields, whose names are separated by blanks.
std::shared_ptr<Index> add_index(TableDef& table, std::string_view name, std::string_view fields,
                                 const std::function<void(Index&)>& prepare = {}) {
  const auto index = table.create_index(name);
  for (std::size_t begin = 0; begin < fields.size();) {
    const std::size_t end = std::min(fields.find(' ', begin), fields.size());
    index->fields().append(index->create_field(fields.substr(begin, end - begin)));
    begin = end + 1;
  }
  if (prepare) prepare(*index);
  table.indexes().append(index);
  return index;
}

void add_row(Database& database, std::string_view name) {
  const auto rows = database.open_recordset("things");
  rows->add_new();
  rows->set_value("name", std::string(name));
  rows->update();
}

TEST_P(Layout, OfANewFieldFollowsItsType) {
  const auto database = create();
  const auto table = database->create_table_def("types");
  struct Case {
    DataType type;
    std::int32_t size;
    std::int32_t attributes;
  };
  for (const Case& row : {Case{DataType::Boolean, 1, 1}, Case{DataType::Byte, 1, 1}, Case{DataType::Integer, 2, 1},
                          Case{DataType::Long, 4, 1}, Case{DataType::Single, 4, 1}, Case{DataType::Double, 8, 1},
                          Case{DataType::Date, 8, 1}, Case{DataType::Text, 255, 2}, Case{DataType::Memo, 0, 2}}) {
    const auto field = table->create_field("f", row.type);
    EXPECT_EQ(field->size(), row.size) << static_cast<int>(row.type);
    EXPECT_EQ(field->attributes(), row.attributes);
    EXPECT_EQ(field->default_value() + field->validation_rule() + field->validation_text(), "");
    EXPECT_FALSE(field->required() || field->allow_zero_length() || field->ordinal_position() != 0);
  }
  EXPECT_EQ(table->create_field("f", DataType::Text, 50)->size(), 50);
  EXPECT_EQ(table->create_field("f", DataType::Date, 50)->size(), 8) << "a size is taken for text only";
}

TEST_P(Layout, IsReadBackAsItWasSet) {
  {
    const auto database = create("test.das", "geheim");
    const auto table = database->create_table_def("import");
    table->set_attributes(0);
    table->set_connect("c");
    table->set_source_table_name("s");
    table->set_validation_rule("r");
    table->set_validation_text("t");
    const auto field = table->create_field("Größe", DataType::Text, 50);
    field->set_attributes(3);
    field->set_default_value("\"0\"");
    field->set_ordinal_position(7);
    field->set_validation_rule("fr");
    table->fields().append(field);
    table->fields().append(table->create_field("desc", DataType::Date));
    // An appended field can still be changed, before its table is appended and afterwards.
    field->set_required(true);
    add_index(*table, "beide", "größe DESC", [](Index& index) { index.set_unique(true); });
    add_index(*table, "PrimaryKey", "desc", [](Index& index) { index.set_primary(true); });
    database->table_defs().append(table);
    field->set_validation_text("ft");
    field->set_allow_zero_length(true);
  }
  const auto database = open("test.das", "geheim");
  const auto table = database->table_defs().item("IMPORT");
  EXPECT_EQ(table->name(), "import");
  EXPECT_EQ(table->connect() + table->source_table_name() + table->validation_rule() + table->validation_text(),
            "csrt");
  const auto field = table->fields().item("GRÖßE");
  EXPECT_EQ(field->name(), "Größe");
  EXPECT_EQ(field->type(), DataType::Text);
  EXPECT_EQ(field->size(), 50);
  EXPECT_EQ(field->attributes(), 3);
  EXPECT_EQ(field->default_value(), "\"0\"");
  EXPECT_EQ(field->ordinal_position(), 7);
  EXPECT_TRUE(field->required() && field->allow_zero_length());
  EXPECT_EQ(field->validation_rule() + field->validation_text(), "frft");
  EXPECT_EQ(table->fields().item(1)->type(), DataType::Date);
  ASSERT_EQ(table->indexes().count(), 2);
  EXPECT_EQ(table->indexes().item(0)->fields().item(0)->name(), "Größe") << "spelled as the table spells it";
  EXPECT_EQ(table->indexes().item("BEIDE")->fields().count(), 2);
  EXPECT_TRUE(table->indexes().item(0)->unique() && !table->indexes().item(0)->primary());
  EXPECT_TRUE(table->indexes().item(1)->primary() && table->indexes().item(1)->unique());
}

TEST_P(Layout, RefusesWhatTheEngineRefuses) {
  const auto database = create();
  add_things(*database);
  const auto things = database->table_defs().item("things");
  const auto append = [&](std::string_view name, DataType type, std::int32_t size = 0, std::int32_t attributes = 0,
                          std::string_view default_value = {}) {
    const auto field = things->create_field(name, type, size);
    if (attributes != 0) field->set_attributes(attributes);
    field->set_default_value(default_value);
    things->fields().append(field);
  };
  const auto new_table = [&](std::string_view name) {
    const auto table = database->create_table_def(name);
    table->fields().append(table->create_field("a", DataType::Long));
    return table;
  };
  add_index(*things, "first", "id", [](Index& index) { index.set_primary(true); });
  struct Case {
    std::string what;
    int number;
    std::function<void()> call;
  };
  const std::vector<Case> cases = {
      {"a field twice", 3191, [&] { append("NAME", DataType::Long); }},
      {"a field of no type", 3259, [&] { append("x", static_cast<DataType>(5)); }},
      {"an AutoNumber that is no Long", 3259, [&] { append("x", DataType::Integer, 0, 16); }},
      {"a second AutoNumber", 3219, [&] { append("x", DataType::Long, 0, 16); }},
      {"a text too wide", 3001, [&] { append("x", DataType::Text, 256); }},
      {"a field without a name", 3125, [&] { append("", DataType::Long); }},
      {"a field with a dot", 3125, [&] { append("a.b", DataType::Long); }},
      {"a field with a long name", 3125, [&] { append(std::string(65, 'x'), DataType::Long); }},
      {"a field that is not there", 3265, [&] { things->fields().item("x"); }},
      {"a field beyond the last", 3265, [&] { things->fields().item(4); }},
      {"a field before the first", 3265, [&] { things->fields().item(-1); }},
      {"deleting no field", 3265, [&] { things->fields().remove("x"); }},
      {"deleting an indexed field", 3280, [&] { things->fields().remove("ID"); }},
      {"renaming to a name that is taken", 3191, [&] { things->fields().item("id")->set_name("Name"); }},
      {"another size", 3219, [&] { things->fields().item("name")->set_size(20); }},
      {"a table twice", 3010, [&] { database->table_defs().append(new_table("THINGS")); }},
      {"a table without fields", 3264, [&] { database->table_defs().append(database->create_table_def("x")); }},
      {"a table with a bad name", 3125, [&] { database->table_defs().append(new_table("jet.tables")); }},
      {"a table of SQLite's own", 3125, [&] { database->table_defs().append(new_table("sqlite_sequence")); }},
      {"a table that is not there", 3265, [&] { database->table_defs().item("jet.tables"); }},
      {"deleting no table", 3265, [&] { database->table_defs().remove("x"); }},
      {"an index twice", 3284, [&] { add_index(*things, "FIRST", "name"); }},
      {"a second primary index", 3283,
       [&] { add_index(*things, "x", "name", [](Index& index) { index.set_primary(true); }); }},
      {"an index on no field", 3264, [&] { add_index(*things, "x", ""); }},
      {"an index on a missing field", 3409, [&] { add_index(*things, "x", "y"); }},
      {"an index that is not there", 3265, [&] { things->indexes().item("x"); }},
      {"changing an index", 3219, [&] { things->indexes().item("first")->set_unique(false); }},
      {"a table whose index misses its field", 3409,
       [&] {
         const auto table = new_table("x");
         add_index(*table, "x", "later");
         database->table_defs().append(table);
       }},
  };
  for (const Case& row : cases) EXPECT_EQ(error_number(row.call), row.number) << row.what;
  EXPECT_THAT(field_names(*database, "things"), ElementsAre("id", "name", "amount", "note"));
  EXPECT_EQ(things->indexes().count(), 1);
  EXPECT_EQ(database->table_defs().count(), 1);
}

TEST_P(Layout, OfATableWithRowsChangesInPlace) {
  {
    const auto database = create();
    add_things(*database);
    for (const std::string_view name : {"Anna", "Bert"}) add_row(*database, name);
    const auto things = database->table_defs().item("things");
    things->fields().append(things->create_field("later", DataType::Double));
    things->fields().remove("id");
    const auto number = things->create_field("number", DataType::Long);
    number->set_attributes(17);
    things->fields().append(number);
    add_index(*things, "byName", "name number");
    things->fields().item("name")->set_name("Vorname");
    things->fields().remove("amount");
    things->fields().item("note")->set_ordinal_position(3);
    things->set_name("people");
  }
  const auto database = open();
  EXPECT_THAT(field_names(*database, "people"), ElementsAre("Vorname", "note", "later", "number"));
  EXPECT_THAT(column(*database, "people", "vorname"), ElementsAre("Anna", "Bert"));
  EXPECT_THAT(column(*database, "people", "later"), ElementsAre("NULL", "NULL"));
  EXPECT_THAT(column(*database, "people", "number"), ElementsAre("3", "4"))
      << "an AutoNumber numbers the rows, and gives no number that another one gave before";
  const auto people = database->table_defs().item("people");
  EXPECT_EQ(people->indexes().item(0)->fields().item(0)->name(), "Vorname");
  EXPECT_EQ(people->fields().item("note")->ordinal_position(), 3);
  people->indexes().remove("byname");
  people->fields().remove("vorname");
  EXPECT_EQ(error_number([&] { database->table_defs().item("things"); }), 3265);
  database->table_defs().remove("people");
  EXPECT_EQ(database->table_defs().count(), 0);
  EXPECT_EQ(error_number([&] { people->name(); }), 3420);
}

TEST_P(Layout, KeepsUniqueIndexesTrue) {
  const auto database = create();
  add_things(*database);
  for (const std::string_view name : {"Ärger", "ärger  "}) add_row(*database, name);
  const auto things = database->table_defs().item("things");
  const auto unique = [](Index& index) { index.set_unique(true); };
  EXPECT_EQ(error_number([&] { add_index(*things, "u", "name", unique); }), 3022) << "neither case nor blanks count";
  EXPECT_EQ(things->indexes().count(), 0);
  const auto rows = database->open_recordset("things");
  rows->edit();
  rows->set_value("name", Null{});
  rows->update();
  EXPECT_EQ(error_number([&] { add_index(*things, "p", "name", [](Index& index) { index.set_primary(true); }); }),
            3058);
  add_index(*things, "u", "name", unique);
  EXPECT_EQ(error_number([&] { add_row(*database, "ÄRGER"); }), 3022);
  rows->add_new();
  EXPECT_EQ(error_number([&] { rows->update(); }), 0) << "Nulls are not alike";
}

TEST_P(Layout, IsTransactional) {
  const auto database = create();
  add_things(*database);
  {
    Transaction transaction{*database};
    const auto things = database->table_defs().item("things");
    things->fields().append(things->create_field("later", DataType::Long));
    things->fields().item("name")->set_name("Vorname");
    add_index(*things, "i", "later");
    EXPECT_EQ(error_number([&] { add_index(*things, "i", "id"); }), 3284);
    EXPECT_THAT(field_names(*database, "things"), ElementsAre("id", "Vorname", "amount", "note", "later"));
  }
  EXPECT_THAT(field_names(*database, "things"), ElementsAre("id", "name", "amount", "note"));
  EXPECT_EQ(database->table_defs().item("things")->indexes().count(), 0);
  EXPECT_EQ(error_number([&] { database->commit_transaction(); }), 3034);
  EXPECT_EQ(error_number([&] { database->rollback_transaction(); }), 3034);
  database->begin_transaction();
  EXPECT_EQ(error_number([&] { database->begin_transaction(); }), 3219) << "not nested";
}

INSTANTIATE_TEST_SUITE_P(Engine, Layout, testing::ValuesIn(engines_under_test()), name_of_engine);

}  // namespace
}  // namespace engine::test
