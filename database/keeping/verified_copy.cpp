#include "database/keeping/verified_copy.h"

#include <memory>

#include "database/engine/choice/file_exchange.h"
#include "database/engine/file_care.h"
#include "database/keeping/table_fingerprint.h"
#include "database/open_database.h"
#include "support/abandoned_files.h"

namespace database::keeping {
namespace {

namespace error_number = support::error_number;

/// While it lives, the handle sees one state of the file, whatever others write.
std::unique_ptr<engine::Transaction> one_state(engine::Database& database) {
  // With another engine, nobody else has the file open.
  return database.care() ? std::make_unique<engine::Transaction>(database) : nullptr;
}

std::vector<TableFingerprint> read_back(engine::Engine& engine, std::string_view path, std::string_view password,
                                        Progress* progress) {
  const auto copy = engine.open_database(path, false, true, connect_text(password));
  const auto state = one_state(*copy);
  return fingerprints(*copy, progress, copy->table_defs().count());
}

}  // namespace

VerifiedCopy::VerifiedCopy(const Environment& environment, std::string_view source, std::string_view password,
                           std::string_view target)
    : environment_(environment), target_(target) {
  support::FileSystem& files = environment.file_system();
  const auto engine = create_engine(environment, false);
  auto database = engine->open_database(source, false, true, connect_text(password));
  if (!database->care()) {
    database->close();
    database = engine->open_database(source, true, false, connect_text(password));
  }
  support::remove_abandoned_files(files.host_path(target_), support::new_database_mark);
  path_ = support::working_path(target_, support::new_database_mark);
  Progress* const progress = environment.progress;
  if (progress) progress->start("", 2 * database->table_defs().count());
  try {
    copy(*database);
    require_same_content(tables_, read_back(*engine, path_, password, progress));
  } catch (...) {
    files.remove(path_);
    throw;
  }
  if (progress) progress->finish();
}

VerifiedCopy::~VerifiedCopy() {
  if (!path_.empty()) environment_.file_system().remove(path_);
}

void VerifiedCopy::copy(engine::Database& source) {
  const auto state = one_state(source);
  source.save_copy(path_);
  tables_ = fingerprints(source, environment_.progress);
}

void VerifiedCopy::take_name() {
  support::FileSystem& files = environment_.file_system();
  if (!files.rename_without_replacing(path_, target_)) {
    const bool taken = files.file_size(target_).has_value() || files.folder_exists(target_);
    if (taken) throw support::RuntimeError(error_number::database_exists, "Database already exists.");
    throw support::RuntimeError(error_number::disk_error, "The copy cannot be given its name.");
  }
  path_.clear();
}

void VerifiedCopy::take_place(std::string_view kept) {
  engine::exchange_file(path_, target_, kept);
  path_.clear();
}

}  // namespace database::keeping
