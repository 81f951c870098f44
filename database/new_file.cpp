#include "database/new_file.h"

#include "database/open_database.h"
#include "support/abandoned_files.h"
#include "support/windows_path.h"

namespace database {

NewFile::NewFile(const Environment& environment, std::string_view path, std::string_view password)
    : files_(environment.file_system()), path_(path) {
  support::RemoveSlashes(path_);
  if (target_exists())
    throw support::RuntimeError(support::error_number::database_exists, "the database exists already");
  support::remove_abandoned_files(files_.host_path(path_), support::new_database_mark);
  engine_ = create_engine(environment, false);
  working_path_ = support::working_path(path_, support::new_database_mark);
  try {
    database_ = engine_->create_database(working_path_, engine::locale_general, engine::version_30);
    if (!password.empty()) database_->new_password("", password);
  } catch (...) {
    discard();
    throw;
  }
}

NewFile::~NewFile() {
  if (!working_path_.empty()) discard();
}

void NewFile::discard() {
  close();
  for (const char* const ending : {"", "-journal"}) files_.remove(working_path_ + ending);
}

void NewFile::finish() {
  close();
  if (!files_.rename_without_replacing(working_path_, path_)) {
    if (target_exists())
      throw support::RuntimeError(support::error_number::database_exists, "the database exists already");
    throw support::RuntimeError(support::error_number::disk_error, "the database cannot be given its name");
  }
  working_path_.clear();
}

void NewFile::close() {
  std::unique_ptr<engine::Recordset> none;
  db_cleanup(engine_, database_, none);
}

bool NewFile::target_exists() const { return files_.file_size(path_).has_value() || files_.folder_exists(path_); }

}  // namespace database
