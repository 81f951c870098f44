#include "database/jet_import/import.h"

#include <gmock/gmock.h>

#include "database/engine/embedded/embedded_engine.h"
#include "database/jet_import/engine_source.h"
#include "database/layout_json.h"
#include "tests/apps/program_run.h"

namespace {

using engine::DataType;
using jet_import::Choices;
using jet_import::SourceField;
using jet_import::SourceTable;
using testing::ElementsAre;
using testing::HasSubstr;

/// A source with one table of `rows` rows, counted from 0. Each field holds the row's number, or `value` if given.
class CountingSource : public jet_import::Source {
 public:
  SourceTable table{"t", {{"n", DataType::Long}}, {}, {}, {}};
  std::vector<std::string> links;
  int rows_there = 3;
  std::optional<engine::Value> value;

  const std::vector<SourceTable>& tables() const override { return tables_ = {table}; }
  const std::vector<std::string>& linked_tables() const override { return links; }
  std::unique_ptr<jet_import::SourceRows> rows(std::size_t) override { return std::make_unique<Rows>(*this); }

 private:
  class Rows : public jet_import::SourceRows {
   public:
    explicit Rows(const CountingSource& source) : source_(source) {}
    bool next() override { return ++row_ < source_.rows_there; }
    engine::Value value(std::size_t) override { return source_.value.value_or(row_); }

   private:
    const CountingSource& source_;
    int row_ = -1;
  };

  mutable std::vector<SourceTable> tables_;
};

class Import : public testing::Test {
 protected:
  std::string path(const std::string& name) const {
    return support::host_file_system().windows_path(folder_.file(name));
  }
  jet_import::Report import(jet_import::Source& source, const Choices& choices = {}) const {
    return jet_import::import_database({}, source, path("target.das"), choices);
  }
  std::unique_ptr<engine::Database> open(const std::string& name) const {
    return engine_->open_database(path(name), false, false, "");
  }
  int error_of_import(jet_import::Source& source) const {
    try {
      import(source);
    } catch (const support::RuntimeError& error) {
      return error.number();
    }
    return 0;
  }

  apps_test::TemporaryFolder folder_;
  std::unique_ptr<engine::Engine> engine_ = engine::embedded::create_embedded_engine();
};

TEST_F(Import, LeavesNothingWhereTheSourceCannotBeCopiedWhole) {
  struct Case {
    int error;
    void (*spoil)(CountingSource& source);
  };
  const Case cases[] = {
      {3343, [](CountingSource& source) { source.table.row_count = 4; }},
      {3343, [](CountingSource& source) { source.table.row_count = 2; }},
      {3259, [](CountingSource& source) { source.table.foreign_fields = {"picture"}; }},
      {3421, [](CountingSource& source) { source.value = "no number"; }},
      {3022,
       [](CountingSource& source) {
         source.table.indexes = {{"key", {"n"}, true, true, true, false}};
         source.value = 1;
       }},
  };
  for (const Case& row : cases) {
    CountingSource source;
    row.spoil(source);
    EXPECT_EQ(error_of_import(source), row.error);
    EXPECT_TRUE(folder_.snapshot().empty());
  }
  folder_.write("target.das", "somebody's");
  CountingSource good;
  EXPECT_EQ(error_of_import(good), 3204);
  EXPECT_EQ(apps_test::content_of(folder_.file("target.das")), "somebody's");
}

TEST_F(Import, SaysWhatItLeavesOut) {
  CountingSource source;
  source.table.fields.front().default_value = "nonsense(";
  source.table.foreign_fields = {"picture"};
  source.table.indexes = {{"by_picture", {"picture"}}};
  source.links = {"elsewhere"};
  EXPECT_THAT(import(source, {"", true}).notes, ElementsAre(HasSubstr("t.picture"), HasSubstr("elsewhere"),
                                                            HasSubstr("by_picture"), HasSubstr("t.n: default")));
}

TEST_F(Import, KeepsRowsThatTheFieldsWouldNotTakeToday) {
  CountingSource source;
  source.table.fields = {{"s", DataType::Text, 5, engine::attribute_variable, 0, "", true}};
  source.value = "";
  EXPECT_EQ(import(source).tables.front().rows, 3);
  const auto database = open("target.das");
  EXPECT_EQ(database->open_recordset("t")->value("s"), engine::Value(""));
  EXPECT_THROW(database->execute("INSERT INTO t (s) VALUES ('')"), support::RuntimeError);
}

TEST_F(Import, CopiesMoreRowsThanOneRecordsetRemembers) {
  CountingSource source;
  source.rows_there = 4001;
  source.table.row_count = 4001;
  EXPECT_EQ(import(source).tables.front().rows, 4001);
  const auto database = open("target.das");
  const auto sums = database->open_recordset("SELECT count(*), sum(n) FROM t");
  EXPECT_EQ(engine::to_int32(sums->value(0)), 4001);
  EXPECT_EQ(engine::to_int32(sums->value(1)), 4000 * 4001 / 2);
}

TEST_F(Import, CopiesLayoutAndValuesThroughTheObjectModel) {
  const char* statements[] = {
      ("CREATE TABLE [a b] (id COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, n SHORT, s TEXT(5), d DATETIME, b YESNO, "
       "m MEMO, x DOUBLE, f SINGLE, y BYTE)"),
      "CREATE INDEX by_two ON [a b] (n, s)",
      "CREATE TABLE empty (v LONG)",
      ("INSERT INTO [a b] (id, n, s, d, b, m, x, f, y) "
       "VALUES (7, -5, 'Ü', #2/29/2024 7:05:00#, True, 'long', 0.1, 5.6, 255)"),
      "INSERT INTO [a b] (n) VALUES (1)",
  };
  {
    const auto database = engine_->create_database(path("source.mdb"), engine::locale_general, engine::version_30);
    for (const char* statement : statements) database->execute(statement);
    const auto text = database->table_defs().item("a b")->fields().item("s");
    text->set_default_value("\"x\"");
    text->set_validation_rule("<>\"y\"");
    database->table_defs().item("a b")->fields().item("m")->set_validation_rule("Own([m])");
    database->table_defs().item("a b")->set_validation_rule("[n] < 100 Or [s] Is Null");
    database->table_defs().item("a b")->set_validation_text("n zu groß");
    database->table_defs().item("empty")->set_validation_rule("Own([v])");
    database->table_defs().item("a b")->fields().item("n")->set_required(true);
  }
  const auto source = jet_import::engine_source(engine::embedded::create_embedded_engine(), open("source.mdb"));
  const auto report = import(*source, {"secret", false});
  EXPECT_THAT(report.notes, ElementsAre("a b.m: its rule is kept, but nothing checks it here: Own([m])",
                                        "empty: its rule is kept, but nothing checks it here: Own([v])"));

  const auto original = open("source.mdb");
  const auto copy = engine_->open_database(path("target.das"), false, false, "MS Access;pwd=secret");
  EXPECT_EQ(database::layout_json(*copy), database::layout_json(*original));
  EXPECT_EQ(copy->table_defs().item("a b")->fields().item("s")->validation_rule(), "<>\"y\"");
  EXPECT_EQ(copy->table_defs().item("a b")->validation_text(), "n zu groß");
  EXPECT_THROW(copy->execute("INSERT INTO [a b] (n, s) VALUES (1, 'y')"), support::RuntimeError);
  EXPECT_THROW(copy->execute("INSERT INTO [a b] (n, s) VALUES (100, 'z')"), support::RuntimeError);
  const auto expected = original->open_recordset("SELECT * FROM [a b]"),
             copied = copy->open_recordset("SELECT * FROM [a b]");
  for (; !expected->eof(); expected->move_next(), copied->move_next()) {
    for (std::int32_t i = 0; i < expected->field_count(); ++i) EXPECT_EQ(copied->value(i), expected->value(i)) << i;
  }
  EXPECT_TRUE(copied->eof());
  copy->execute("INSERT INTO [a b] (n) VALUES (2)");
  EXPECT_EQ(engine::to_int32(copy->open_recordset("SELECT max(id) FROM [a b]")->value(0)), 9);
}

}  // namespace
