#include "database/engine/choice/file_exchange.h"

#include <filesystem>
#include <memory>
#include <string>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/platform_file.h"
#include "database/engine/engine_error.h"
#include "support/file_system.h"
#include "support/host_file.h"
#include "support/host_path.h"

namespace engine {
namespace {

using embedded::Connection;

/// Opens the file alone: nobody else has it open, or opens it from now on.
std::unique_ptr<Connection> hold_alone(const std::string& path) {
  auto held = std::make_unique<Connection>(path, embedded::ConnectionOptions{});
  if (!held->hold_alone()) raise(support::error_number::file_in_use);
  return held;
}

/// Other programs do not know our lock, so the system is asked whether anybody uses the file. Asking takes away the
/// locks that this process holds on the file, so it must hold none.
void require_unused(const std::string& path) {
  hold_alone(path).reset();
  if (!support::is_host_file_unused(path)) raise(support::error_number::file_in_use);
}

/// For file systems that give a file no second name.
void exchange_by_names(const std::string& source, const std::string& target, const std::string& kept) {
  if (!support::rename_host_file(target, kept))
    raise(support::host_file_exists(kept) ? support::error_number::database_exists : support::error_number::disk_error);
  if (support::rename_host_file(source, target)) return;
  if (support::rename_host_file(kept, target)) raise(support::error_number::disk_error);
  raise(support::error_number::disk_error,
        "the file that was to be replaced bears the name that it was to be kept under");
}

void replace(std::unique_ptr<Connection>& held, const std::string& source, const std::string& target) {
  try {
    embedded::replace_held_file(held, source, target);
  } catch (const support::RuntimeError& error) {
    if (error.number() == support::error_number::file_in_use) throw;
    // The error's text says what has become of the files.
    throw support::RuntimeError(support::error_number::disk_error, error.what());
  }
}

}  // namespace

void exchange_file(std::string_view source_path, std::string_view target_path, std::string_view kept_path) {
  const support::FileSystem& files = support::host_file_system();
  const std::string source = files.host_path(source_path), target = files.host_path(target_path);
  embedded::check_place_of_file(target);
  require_unused(target);
  std::unique_ptr<Connection> held = hold_alone(target);
  if (embedded::has_journal(target)) {
    raise(support::error_number::unknown_format,
          "beside the file lies the journal of a change that was not completed, which its password undoes");
  }
  if (kept_path.empty()) return replace(held, source, target);
  const std::string kept = files.host_path(kept_path);
  if (support::host_file_exists(kept)) raise(support::error_number::database_exists);
  if (!support::link_host_file(target, kept)) {
    held.reset();
    return exchange_by_names(source, target, kept);
  }
  try {
    replace(held, source, target);
  } catch (const support::RuntimeError&) {
    std::error_code ignored;
    std::filesystem::remove(support::std_path(kept), ignored);
    throw;
  }
}

}  // namespace engine
