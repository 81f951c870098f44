#include "database/keeping/compact.h"

#include "database/engine/file_care.h"
#include "database/keeping/table_fingerprint.h"
#include "database/open_database.h"

namespace database::keeping {

Compaction compact_file(const Environment& environment, std::string_view path, std::string_view password) {
  const auto engine = create_engine(environment, false);
  const auto database = engine->open_database(path, true, false, connect_text(password));
  engine::FileCare* const care = database->care();
  if (!care) {
    throw support::RuntimeError(support::error_number::not_supported,
                                "Operation is not supported: the file belongs to the Jet engine, whose own "
                                "programs compact it.");
  }
  Compaction done;
  done.bytes_before = environment.file_system().file_size(path).value_or(0);
  Progress* const progress = environment.progress;
  const std::int32_t tables = database->table_defs().count();
  if (progress) progress->start("", 2 * tables);
  const std::vector<TableFingerprint> before = fingerprints(*database, progress);
  care->compact(
      [&](engine::Database& written) { require_same_content(before, fingerprints(written, progress, tables)); });
  if (progress) progress->finish();
  done.bytes_after = environment.file_system().file_size(path).value_or(0);
  done.rows = row_count(before);
  return done;
}

}  // namespace database::keeping
