// A file without gaps: written anew beside the old one, whose place it takes.
#include "database/engine/embedded/file_copy.h"
#include "database/engine/embedded/session.h"
#include "database/engine/embedded/table_counters.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {

void Session::compact(const std::function<void(const std::string& host_path)>& verify) {
  require_open();
  if (in_transaction_) raise(error_number::not_in_transaction);
  prepare_change();
  // Of a file that is not there yet nothing can be compacted.
  if (new_file_) return;
  rewrite([&](Connection& reader, const std::string& path) {
    copy_compacted(reader, path, password_);
    verify(path);
  });
  // What this handle gave beyond the highest number was set back with the rest.
  counters_ = {};
  connect_existing();
}

}  // namespace engine::embedded
