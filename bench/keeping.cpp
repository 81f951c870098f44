// A backup that is read back and compared, an export, and a check. The straight side does the least that they need: it
// copies the rows of every table to a new file of the same kind, and reads all pages and rows.
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/filled_file.h"
#include "bench/jobs.h"
#include "bench/patient_file.h"
#include "bench/straight.h"
#include "database/jet_import/engine_source.h"
#include "database/keeping/backup.h"
#include "database/keeping/check.h"
#include "database/open_database.h"
#include "database/transfer/export.h"

namespace bench {
namespace {

constexpr int glucose_rows = 100'000;

std::vector<std::string> texts(sqlite3* database, const char* sql) {
  std::vector<std::string> found;
  const StraightStatement rows = prepare(database, sql);
  while (sqlite3_step(rows.get()) == SQLITE_ROW) {
    found.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), 0)));
  }
  return found;
}

void copy_rows(sqlite3* source, sqlite3* target, const std::string& table) {
  const StraightStatement rows = prepare(source, "SELECT * FROM \"" + table + "\"");
  const int columns = sqlite3_column_count(rows.get());
  std::string places = "?";
  for (int i = 1; i < columns; ++i) places += ",?";
  const StraightStatement insert = prepare(target, "INSERT INTO \"" + table + "\" VALUES(" + places + ")");
  while (sqlite3_step(rows.get()) == SQLITE_ROW) {
    for (int i = 0; i < columns; ++i) sqlite3_bind_value(insert.get(), i + 1, sqlite3_column_value(rows.get(), i));
    check(target, sqlite3_step(insert.get()));
    sqlite3_reset(insert.get());
  }
}

void copy_straight(const FilledFile& file, const std::string& copy) {
  const StraightDatabase source = open_straight(file.path, file.key), target = open_straight(copy, file.key);
  execute(target.get(), "PRAGMA synchronous=EXTRA");
  execute(target.get(), "BEGIN");
  for (const std::string& sql : texts(source.get(), "SELECT sql FROM sqlite_schema WHERE type='table'")) {
    execute(target.get(), sql);
  }
  for (const std::string& table : texts(source.get(), "SELECT name FROM sqlite_schema WHERE type='table'")) {
    copy_rows(source.get(), target.get(), table);
  }
  for (const std::string& sql :
       texts(source.get(), "SELECT sql FROM sqlite_schema WHERE type='index' AND sql IS NOT NULL")) {
    execute(target.get(), sql);
  }
  execute(target.get(), "COMMIT");
}

void check_straight(const FilledFile& file) {
  const StraightDatabase database = open_straight(file.path, file.key);
  if (texts(database.get(), "PRAGMA integrity_check").front() != "ok") throw std::runtime_error("damaged");
  for (const std::string& table : texts(database.get(), "SELECT name FROM sqlite_schema WHERE type='table'")) {
    const StraightStatement rows = prepare(database.get(), "SELECT * FROM \"" + table + "\"");
    while (sqlite3_step(rows.get()) == SQLITE_ROW) {
      for (int i = 0; i < sqlite3_column_count(rows.get()); ++i) sqlite3_column_bytes(rows.get(), i);
    }
  }
}

void export_csv(const std::string& path, const std::filesystem::path& folder) {
  const database::Environment environment;
  auto engine = database::create_engine(environment, false);
  auto database = engine->open_database(windows_path(path), false, true,
                                        database::connect_text(std::string(database::default_password)));
  database->begin_transaction();
  const auto source = jet_import::engine_source(std::move(engine), std::move(database));
  transfer::export_tables(*source, folder.string(), {}, nullptr);
}

}  // namespace

Job backup_job(const std::filesystem::path& folder) {
  const auto file = std::make_shared<FilledFile>(create_filled_file(folder / "keep.das", glucose_rows));
  const std::string copy = (folder / "copy.das").string();
  return {.name = "back up a year, read back and compared",
          .limit = 1.2,
          .ours =
              [file, copy] {
                const database::Environment environment;
                database::keeping::back_up(environment, windows_path(file->path), database::default_password,
                                           windows_path(copy), false);
              },
          .straight = [file, copy] { copy_straight(*file, copy); },
          .prepare = [copy] { std::filesystem::remove(copy); }};
}

Job export_job(const std::filesystem::path& folder) {
  const auto file = std::make_shared<FilledFile>(create_filled_file(folder / "export.das", glucose_rows));
  const std::string copy = (folder / "exported_rows.das").string();
  const std::filesystem::path out = folder / "exported";
  return {.name = "export a year as csv",
          .limit = 2.0,
          .ours = [file, out] { export_csv(file->path, out); },
          .straight = [file, copy] { copy_straight(*file, copy); },
          .prepare =
              [copy, out] {
                std::filesystem::remove(copy);
                std::filesystem::remove_all(out);
              }};
}

Job check_job(const std::filesystem::path& folder) {
  const auto file = std::make_shared<FilledFile>(create_filled_file(folder / "check.das", glucose_rows));
  return {.name = "check a year",
          .limit = 2.0,
          .ours =
              [file] {
                const database::Environment environment;
                database::keeping::check_database(environment, windows_path(file->path), database::default_password);
              },
          .straight = [file] { check_straight(*file); }};
}

}  // namespace bench
