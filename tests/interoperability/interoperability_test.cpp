// SQLCipher, built from its own source, works on our files, and we work on its files. It does not know our sorting
// order of texts, unless a test gives it one.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "database/engine/embedded/embedded_engine.h"
#include "support/file_system.h"
#include "tests/apps/process_run.h"
#include "tests/interoperability/row_text.h"

namespace {

using apps_test::Environment;
using apps_test::Outcome;
using interoperability::number_text;
using interoperability::quoted_text;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;

const std::string own_password = "Gürtel 'n 07";
/// A full database has at least so many.
constexpr std::size_t least_rows = 18;
const std::string no_order = "no such collation sequence: JET\n";

using Lines = std::vector<std::string>;

Lines lines_of(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// Stands before a table's rows in the other tool's output.
const std::string section = "rows of ";

/// The rows of each table, sorted.
std::map<std::string, Lines> sections_of(const std::string& output) {
  std::map<std::string, Lines> sections;
  Lines* rows = nullptr;
  for (const std::string& line : lines_of(output)) {
    if (line.starts_with('"' + section)) {
      rows = &sections[line.substr(1 + section.size(), line.size() - section.size() - 2)];
    } else if (rows) {
      rows->push_back(line);
    }
  }
  for (auto& [table, lines] : sections) std::ranges::sort(lines);
  return sections;
}

std::string in_quotes(const std::string& name, char quote) {
  std::string quoted(1, quote);
  for (const char c : name) quoted.append(c == quote ? 2 : 1, c);
  return quoted + quote;
}

std::string for_shell(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

std::string line_text(const engine::Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return quoted_text(*text);
  if (const auto* date = std::get_if<engine::Date>(&value)) return number_text(date->days);
  if (const auto* yes = std::get_if<bool>(&value)) return *yes ? "-1" : "0";
  if (const auto* single = std::get_if<float>(&value)) return number_text(static_cast<double>(*single));
  return engine::is_null(value) ? "null" : number_text(engine::to_double(value));
}

class Interoperability : public apps_test::ProcessTest {
 protected:
  static Outcome patientdb(const std::vector<std::string>& arguments, const std::string& password) {
    return apps_test::run_patientdb(arguments, {{"PATIENTDB_PASSWORD", password}});
  }

  /// What SQLCipher says to the statements. `options` stand before them.
  Outcome sqlcipher(const std::string& file, const std::string& password, const Lines& statements,
                    const std::string& options = "") const {
    std::string command = password.empty() ? "" : "KEY=" + for_shell(password) + " ";
    command += "$BIN/sqlcipher_shell " + for_shell(file) + " " + options;
    for (const std::string& statement : statements) command += " " + for_shell(statement);
    return shell(command);
  }

  /// The 43 tables of a patient, and one with every type of field and an index on a text.
  std::string full_database(const std::string& name, const std::string& password) const {
    std::string file = folder_.file(name);
    EXPECT_EQ(patientdb({"create", file, "--name", "Öztürk-Müßig", "--firstname", "Ayşe"}, password).code, 0);
    const Outcome filled =
        patientdb({"sql", file,
                   "CREATE TABLE [odd, name?] (id COUNTER, yes YESNO, b BYTE, n SHORT, l LONG, f SINGLE, x DOUBLE, d "
                   "DATETIME, [a \"b\"] TEXT(60), m MEMO)",
                   "CREATE UNIQUE INDEX bytext ON [odd, name?] ([a \"b\"]) WITH PRIMARY",
                   "INSERT INTO [odd, name?] (yes, b, n, l, f, x, d, [a \"b\"], m) VALUES (True, 255, -32768, "
                   "-2147483648, 5.6, 0.1, #2/29/2024 7:05:01#, 'Ähre', 'Zeile' & chr(13) & chr(10) & 'zwei')",
                   "INSERT INTO [odd, name?] (f, x, d, [a \"b\"], m) VALUES (-1E-40, 4.9E-324, -1.75, 'apfel', '😀𝄞')",
                   "INSERT INTO [odd, name?] ([a \"b\"]) VALUES ('Zebra')",
                   "INSERT INTO glucose (vDate, Value, Comment) VALUES (#1/2/2024#, 101, 'nüchtern')"},
                  password);
    EXPECT_EQ(filled.code, 0) << filled.err;
    return file;
  }

  static std::unique_ptr<engine::Database> open(engine::Engine& engine, const std::string& file,
                                                const std::string& password) {
    return engine.open_database(support::host_file_system().windows_path(file), false, true,
                                password.empty() ? "" : "MS Access;pwd=" + password);
  }

  /// The SELECT of a table's columns for another tool, and the rows that our engine finds there.
  static std::pair<std::string, Lines> rows_of(engine::Database& database, const std::string& table) {
    const auto rows = database.open_forward_only(table);
    std::string columns;
    for (int i = 0; i < rows->field_count(); ++i) columns += (i == 0 ? "" : ", ") + in_quotes(rows->field_name(i), '"');
    Lines lines;
    for (; !rows->eof(); rows->move_next()) {
      std::string line;
      for (int i = 0; i < rows->field_count(); ++i) line += (i == 0 ? "" : "|") + line_text(rows->value(i));
      lines.push_back(line);
    }
    std::ranges::sort(lines);
    return {"SELECT " + columns + " FROM " + in_quotes(table, '"'), lines};
  }

  /// Expects that both read the same tables and the same rows in each. Returns the number of rows.
  std::size_t expect_same_rows(const std::string& file, const std::string& password) const {
    const auto engine = engine::embedded::create_embedded_engine();
    const auto database = open(*engine, file, password);
    std::map<std::string, Lines> ours;
    Lines statements;
    std::size_t count = 0;
    for (int i = 0; i < database->table_defs().count(); ++i) {
      const std::string table = database->table_defs().item(i)->name();
      auto [select, rows] = rows_of(*database, table);
      count += rows.size();
      ours[table] = std::move(rows);
      statements.insert(statements.end(), {"SELECT " + in_quotes(section + table, '\''), select});
    }
    const Outcome told = sqlcipher(file, password, statements);
    EXPECT_EQ(told.err, "");
    EXPECT_EQ(sections_of(told.out), ours);
    Lines names;
    for (const auto& [table, rows] : ours) names.push_back(quoted_text(table));
    const std::string tables = "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'jet.%'";
    EXPECT_THAT(lines_of(sqlcipher(file, password, {tables}).out), UnorderedElementsAreArray(names));
    return count;
  }

  void expect_sound(const std::string& file, const std::string& password) const {
    const Outcome checked = patientdb({"check", file}, password);
    EXPECT_EQ(checked.code, 0) << checked.out << checked.err;
  }
};

TEST_F(Interoperability, AnotherToolReadsEveryRowOfEveryTable) {
  for (const std::string& password : {own_password, std::string()}) {
    SCOPED_TRACE(password);
    const std::string file = full_database(password.empty() ? "plain.das" : "locked.das", password);
    EXPECT_GT(expect_same_rows(file, password), least_rows);
    EXPECT_THAT(sqlcipher(file, password, {"SELECT \"a \"\"b\"\"\", m FROM \"odd, name?\""}).out,
                HasSubstr("\"Ähre\"|\"Zeile\\r\\nzwei\"\n"));
  }
  const std::string locked = folder_.file("locked.das");
  const std::string settings = sqlcipher(locked, own_password, {"PRAGMA cipher_settings"}).out;
  const std::string page = apps_test::content_of(SOURCE_DIR "/docs/interoperability.md");
  for (const auto& [name, value] : std::map<std::string, std::string>{{"cipher_page_size", "4096"},
                                                                      {"kdf_iter", "256000"},
                                                                      {"cipher_hmac_algorithm", "HMAC_SHA512"},
                                                                      {"cipher_kdf_algorithm", "PBKDF2_HMAC_SHA512"},
                                                                      {"cipher_plaintext_header_size", "0"}}) {
    EXPECT_THAT(settings, HasSubstr("PRAGMA " + name + " = " + value + ";"));
    EXPECT_THAT(page, testing::ContainsRegex("`" + name + "` [|] `?" + value + "`? [|]"));
  }
  EXPECT_THAT(sqlcipher(locked, own_password, {"PRAGMA cipher_integrity_check"}).out, IsEmpty());
  for (const std::string& wrong : {std::string("falsch"), std::string()}) {
    EXPECT_EQ(sqlcipher(locked, wrong, {"SELECT count(*) FROM patdat"}).code, 1) << wrong;
  }
}

struct Attempt {
  std::string statement;
  bool works;
};

TEST_F(Interoperability, WithoutOurOrderOfTextsAToolIsRefusedWhateverNeedsIt) {
  const std::string file = full_database("file.das", own_password), table = "\"odd, name?\"";
  const std::string text = "\"a \"\"b\"\"\"";
  const Attempt attempts[] = {
      {"SELECT count(*) FROM " + table + " NOT INDEXED", true},
      {"SELECT name FROM patdat WHERE name LIKE 'Ö%'", true},
      {"SELECT name FROM patdat WHERE name = 'Öztürk-Müßig' COLLATE BINARY ORDER BY name COLLATE NOCASE", true},
      {"SELECT vDate FROM glucose WHERE Value > 100 ORDER BY vDate", true},
      {"SELECT count(*) FROM " + table, false},
      {"SELECT name FROM patdat ORDER BY name", false},
      {"SELECT name FROM patdat WHERE name = 'x'", false},
      {"SELECT name FROM patdat WHERE name < 'x'", false},
      {"SELECT DISTINCT name FROM patdat", false},
      {"SELECT max(name) FROM patdat", false},
      {"SELECT count(*) FROM patdat GROUP BY name", false},
      {"PRAGMA integrity_check", false},
      {"VACUUM", false},
      {"REINDEX", false},
      {"INSERT INTO " + table + "(" + text + ") VALUES ('neu')", false},
      {"UPDATE " + table + " SET " + text + "='neu'", false},
      {"DELETE FROM " + table + " WHERE id=1", false},
  };
  for (const Attempt& attempt : attempts) {
    SCOPED_TRACE(attempt.statement);
    const Outcome outcome = sqlcipher(file, own_password, {attempt.statement});
    EXPECT_EQ(outcome.err, attempt.works ? "" : no_order);
    EXPECT_EQ(outcome.out.empty(), !attempt.works);
  }
  expect_sound(file, own_password);
  EXPECT_GT(expect_same_rows(file, own_password), least_rows);
}

TEST_F(Interoperability, AToolCanCountTheRowsOfEveryTableOfAPatient) {
  const std::string file = folder_.file("patient.das"), index = folder_.file("index.mdb");
  ASSERT_EQ(patientdb({"create", file}, "").code, 0);
  ASSERT_EQ(patientdb({"index", index, "create"}, "").code, 0);
  for (const std::string& made : {file, index}) {
    const std::string tables = "SELECT name FROM sqlite_master WHERE type='table'";
    for (const std::string& name : lines_of(sqlcipher(made, "", {tables}).out)) {
      const Outcome counted = sqlcipher(made, "", {"SELECT count(*) FROM " + name});
      EXPECT_EQ(counted.code, 0) << name << ": " << counted.err;
    }
  }
}

TEST_F(Interoperability, WeReadWhatAnotherToolWroteIntoOurFile) {
  const std::string file = full_database("file.das", own_password);
  const Outcome written =
      sqlcipher(file, own_password,
                {"UPDATE glucose SET Value=202, Comment='geändert' WHERE Value=101",
                 "INSERT INTO glucose (vDate, Value, Comment) VALUES (45351.75, 90, 'nach dem Laufen 🏃')",
                 "SELECT datetime(vDate + 2415018.5) FROM glucose WHERE Value=90"});
  EXPECT_EQ(written.err, "");
  EXPECT_EQ(written.out, "\"2024-02-29 18:00:00\"\n");
  const std::string query = "SELECT id, Value, Comment, vDate FROM glucose ORDER BY Value";
  EXPECT_THAT(
      patientdb({"sql", file, query, "--json"}, own_password).out,
      HasSubstr(
          "[[null,90,\"nach dem Laufen 🏃\",\"2024-02-29 18:00:00\"],[1,202,\"geändert\",\"2024-01-02 00:00:00\"]]"));
  const std::string checked = patientdb({"check", file}, own_password).out;
  EXPECT_THAT(checked, HasSubstr("required: glucose.ID: 1 row: has no AutoNumber"));
  EXPECT_THAT(checked, HasSubstr(" 1 finding\n")) << checked;
}

TEST_F(Interoperability, WeOpenFilesThatAnotherToolHasEncrypted) {
  const std::string file = full_database("file.das", own_password), plain = full_database("plain.das", "");
  const std::string rows = patientdb({"export", file, folder_.file("rows")}, own_password).out;
  const std::string identity = patientdb({"schema", file, "--json"}, own_password).out;
  const auto expect_ours = [&](const std::string& made, const std::string& password) {
    expect_sound(made, password);
    EXPECT_EQ(patientdb({"schema", made, "--json"}, password).out, identity);
    EXPECT_EQ(patientdb({"sql", made, "INSERT INTO glucose (Comment) VALUES ('von uns')"}, password).code, 0);
    EXPECT_GT(expect_same_rows(made, password), least_rows);
  };
  // In place: each page is encrypted with another key.
  EXPECT_EQ(sqlcipher(file, own_password, {"PRAGMA rekey = 'neu 9ß'"}).err, "");
  expect_ours(file, "neu 9ß");
  // A new file, with all rows and indexes built by the other tool.
  const std::string kept = "PRAGMA made.application_id = " + sqlcipher(plain, "", {"PRAGMA application_id"}).out +
                           "; PRAGMA made.user_version = " + sqlcipher(plain, "", {"PRAGMA user_version"}).out;
  const std::string made = folder_.file("made.das");
  EXPECT_EQ(sqlcipher(plain, "",
                      {"ATTACH " + in_quotes(made, '\'') + " AS made KEY 'fremd 8ö'", "SELECT sqlcipher_export('made')",
                       kept},
                      "--collation own")
                .err,
            "");
  expect_ours(made, "fremd 8ö");
  // Without our order the file cannot be made completely, and is not accepted as one of ours.
  const std::string half = folder_.file("half.das");
  EXPECT_EQ(
      sqlcipher(plain, "", {"ATTACH " + in_quotes(half, '\'') + " AS made KEY 'x'", "SELECT sqlcipher_export('made')"})
          .err,
      no_order);
  EXPECT_THAT(patientdb({"info", half}, "x").err, StartsWith("error 3343: "));
}

TEST_F(Interoperability, AFileOfOtherSettingsIsRefusedInWordsAndStaysAsItIs) {
  const std::string plain = full_database("plain.das", "");
  const std::pair<std::string, std::string> settings[] = {
      {"PRAGMA made.cipher_page_size = 8192", "pages of 8192 bytes"},
      {"PRAGMA made.cipher_compatibility = 3", "error 3031: "},
      {"PRAGMA made.kdf_iter = 64000", "error 3031: "},
  };
  for (const auto& [setting, words] : settings) {
    SCOPED_TRACE(setting);
    const std::string made = folder_.file(setting.substr(setting.size() - 4) + ".das");
    const Outcome exported = sqlcipher(
        plain, "",
        {"ATTACH " + in_quotes(made, '\'') + " AS made KEY 'geheim'", setting, "SELECT sqlcipher_export('made')"},
        "--collation own");
    ASSERT_EQ(exported.err, "");
    const std::string before = apps_test::content_of(made);
    const Outcome refused = patientdb({"info", made}, "geheim");
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, HasSubstr(words));
    EXPECT_EQ(apps_test::content_of(made), before);
  }
}

TEST_F(Interoperability, WritingWithAnotherOrderUnderOurNameIsFoundAndMended) {
  const std::string file = full_database("file.das", own_password);
  const std::string insert =
      "INSERT INTO \"odd, name?\" (id, yes, \"a \"\"b\"\"\") VALUES (9, 0, 'ähnlich'), (10, 0, 'Bär')";
  ASSERT_EQ(sqlcipher(file, own_password, {insert}, "--collation stand-in").err, "");
  const Outcome found = patientdb({"check", file}, own_password);
  EXPECT_EQ(found.code, 1);
  EXPECT_THAT(found.out, HasSubstr("bytext"));
  // No row is lost: the rows are copied out without the index and back with a new one.
  const std::string taken = folder_.file("taken"), mended = folder_.file("mended.das");
  EXPECT_EQ(patientdb({"export", file, taken, "--format", "sqlite"}, own_password).code, 0);
  const Outcome imported = patientdb({"import", taken, mended}, own_password);
  EXPECT_EQ(imported.code, 0) << imported.err;
  expect_sound(mended, own_password);
  EXPECT_THAT(
      patientdb({"sql", mended, "SELECT id FROM [odd, name?] WHERE [a \"b\"]='BÄR'", "--json"}, own_password).out,
      HasSubstr("[[10]]"));
}

}  // namespace
