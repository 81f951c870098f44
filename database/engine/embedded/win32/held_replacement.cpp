#include "database/engine/embedded/held_replacement.h"

#include <fstream>

#include "database/engine/engine_error.h"
#include "support/host_file.h"
#include "support/host_path.h"

namespace engine::embedded {
namespace {

/// Each commit changes it.
std::string first_page(const std::string& path) {
  std::string page(4096, '\0');
  std::ifstream file(support::std_path(path), std::ios::binary);
  file.read(page.data(), std::ssize(page));
  page.resize(static_cast<std::size_t>(file.gcount()));
  return page;
}

}  // namespace

// A file that somebody has open is not replaced. Who has opened, changed and closed it since it was released has left
// another first page.
void replace_held_file(std::unique_ptr<Connection>& held, const std::string& source, const std::string& target) {
  const std::string known = first_page(target);
  held.reset();
  try {
    support::replace_with_host_file(source, target, [&] { return first_page(target) == known; });
  } catch (const support::RuntimeError&) {
    if (support::host_file_exists(target) && (first_page(target) != known || !support::is_host_file_unused(target))) {
      raise(error_number::file_in_use);
    }
    throw;
  }
}

}  // namespace engine::embedded
