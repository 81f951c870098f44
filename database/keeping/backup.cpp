#include "database/keeping/backup.h"

#include <fmt/core.h>

#include <filesystem>

#include "database/file_failure.h"
#include "database/keeping/verified_copy.h"
#include "database/open_database.h"
#include "database/version_record.h"
#include "support/encoding.h"
#include "support/host_path.h"

namespace database::keeping {
namespace {

struct NameParts {
  std::string_view folder;  ///< with the backslash at its end
  std::string_view stem;
  std::string_view ending;  ///< with its dot
};

NameParts parts_of(std::string_view path) {
  const std::size_t name = path.find_last_of("\\/:") + 1;
  const std::size_t dot = path.rfind('.');
  const std::size_t stem_end = dot == std::string_view::npos || dot <= name ? path.size() : dot;
  return {path.substr(0, name), path.substr(name, stem_end - name), path.substr(stem_end)};
}

/// "20240517-083000"
std::string moment(engine::Date date) {
  const engine::CalendarTime parts = engine::calendar_time(date);
  return fmt::format("{:04}{:02}{:02}-{:02}{:02}{:02}", parts.year, parts.month, parts.day, parts.hour, parts.minute,
                     parts.second);
}

bool has_record(engine::Database& database) {
  engine::TableDefs& tables = database.table_defs();
  for (std::int32_t i = 0; i < tables.count(); ++i) {
    if (support::equal_ignoring_case(tables.item(i)->name(), "db_info")) return true;
  }
  return false;
}

/// ".4.60"; empty where the file has no version record.
std::string layout_of(const Environment& environment, std::string_view path, std::string_view password) {
  const auto engine = create_engine(environment, false);
  const auto database = engine->open_database(path, false, true, connect_text(password));
  if (!has_record(*database)) return {};
  VersionRecord record;
  if (!db_ReadDBInfo(environment, *database, record)) return {};
  return "." + std::to_string(record.MajVersion) + "." + std::to_string(record.MinVersion);
}

/// `stem`, the moment and the ending, as a name that no file has. The second name in one second ends in "-2".
std::string free_name(const Environment& environment, std::string_view stem, std::string_view ending) {
  constexpr int most_names = 99;
  const std::string now = moment(environment.present());
  for (int number = 1; number <= most_names; ++number) {
    std::string name{stem};
    name.append(now).append(number > 1 ? "-" + std::to_string(number) : "").append(ending);
    if (!environment.file_system().file_size(name)) return name;
  }
  throw support::RuntimeError(support::error_number::database_exists, "Database already exists.");
}

std::string name_in_folder(const Environment& environment, std::string_view source, std::string_view password,
                           std::string_view folder) {
  const NameParts name = parts_of(source);
  std::string stem{folder};
  if (!stem.ends_with('\\')) stem += '\\';
  stem.append(name.stem).append(layout_of(environment, source, password)).append(".");
  return free_name(environment, stem, name.ending);
}

std::string name_to_keep(const Environment& environment, std::string_view path) {
  const NameParts name = parts_of(path);
  return free_name(environment, std::string(name.folder).append(name.stem).append(".replaced-"), name.ending);
}

/// Raises unless the backup is consistent and, as far as that can be told, a database of this product.
void require_sound(const Environment& environment, std::string_view path, std::string_view password) {
  const auto engine = create_engine(environment, false);
  const auto database = engine->open_database(path, false, true, connect_text(password));
  if (!has_record(*database)) return;
  VersionRecord record;
  bool read = false;
  const support::Outcome outcome = support::outcome_of([&] { read = db_ReadDBInfo(environment, *database, record); });
  if (read) return;
  outcome.raise_first(is_file_failure);
  throw support::RuntimeError(support::error_number::unknown_format, "The backup is no database of this product.");
}

/// Opening the file undoes what a process left half done when it died. If the file cannot be opened, the exchange will
/// report the reason.
void undo_half_done(const Environment& environment, std::string_view path, std::string_view password) {
  try {
    create_engine(environment, false)->open_database(path, false, false, connect_text(password));
  } catch (const support::RuntimeError&) {
    // The file may be damaged, which may be why it is replaced, or may have another password.
  }
}

bool is_one_file(const Environment& environment, std::string_view left, std::string_view right) {
  std::error_code failure;
  const support::FileSystem& files = environment.file_system();
  return std::filesystem::equivalent(support::std_path(files.host_path(left)),
                                     support::std_path(files.host_path(right)), failure);
}

}  // namespace

Backup back_up(const Environment& environment, std::string_view source, std::string_view password,
               std::string_view target, bool replace) {
  const support::FileSystem& files = environment.file_system();
  Backup done;
  done.path = files.folder_exists(target) ? name_in_folder(environment, source, password, target) : target;
  const bool there = files.file_size(done.path).has_value();
  if (there && is_one_file(environment, source, done.path)) {
    throw support::RuntimeError(support::error_number::invalid_call, "The file and its backup are one file.");
  }
  if (there && !replace)
    throw support::RuntimeError(support::error_number::database_exists, "Database already exists.");
  VerifiedCopy copy{environment, source, password, done.path};
  done.bytes = copy.bytes();
  done.tables = copy.tables();
  there ? copy.take_place({}) : copy.take_name();
  return done;
}

Restored restore(const Environment& environment, std::string_view backup, std::string_view password,
                 std::string_view target) {
  const bool there = environment.file_system().file_size(target).has_value();
  if (there && is_one_file(environment, backup, target)) {
    throw support::RuntimeError(support::error_number::invalid_call, "The file and its backup are one file.");
  }
  require_sound(environment, backup, password);
  VerifiedCopy copy{environment, backup, password, target};
  Restored done{{}, copy.tables()};
  if (!there) {
    copy.take_name();
    return done;
  }
  undo_half_done(environment, target, password);
  done.kept = name_to_keep(environment, target);
  copy.take_place(done.kept);
  return done;
}

}  // namespace database::keeping
