#include "database/engine/embedded/openings.h"

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/database_file.h"
#include "support/file_system.h"

namespace engine::embedded {

std::optional<FileSalt> EmbeddedOpenings::new_salt_of(std::string_view path) const {
  if (path.empty() || password_.empty()) return std::nullopt;
  try {
    const std::string host_path = support::host_file_system().host_path(path);
    check_place_of_file(host_path);
    Connection connection{host_path, {.read_only = true}};
    const DatabaseFile file =
        identify_database_file(connection.beginning(telling_size), connection.file_size(), has_journal(host_path));
    if (!file.encrypted || is_key_known(password_, file.salt)) return std::nullopt;
    return file.salt;
  } catch (const support::RuntimeError&) {
    // Its opening will say what is wrong with it.
    return std::nullopt;
  }
}

void EmbeddedOpenings::announce(std::string_view path) {
  announced_.push_back(new_salt_of(path));
  if (announced_.back()) keys_.expect(*announced_.back());
}

void EmbeddedOpenings::pass() {
  if (announced_.empty()) return;
  if (announced_.front()) keys_.pass(*announced_.front());
  announced_.pop_front();
}

}  // namespace engine::embedded
