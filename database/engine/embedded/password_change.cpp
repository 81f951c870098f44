// The password of a file: the whole file is written anew beside the old one and takes its place, so that at any moment
// the old password opens it or the new one.
#include "database/engine/embedded/file_copy.h"
#include "database/engine/embedded/session.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {

void Session::change_password(std::string_view old_password, std::string_view new_password) {
  require_open();
  if (is_too_long(new_password) || old_password != password_) raise(error_number::wrong_password);
  if (in_transaction_) raise(error_number::not_in_transaction);
  prepare_change();
  if (new_file_) {
    disconnect();
    password_ = new_password;
    return;
  }
  rewrite(
      [&](Connection& reader, const std::string& path) { copy_with_password(reader, path, password_, new_password); });
  wipe_memory(password_.data(), password_.size());
  password_ = new_password;
  connect_existing();
}

}  // namespace engine::embedded
