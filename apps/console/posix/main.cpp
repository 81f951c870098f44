// The main of the console programs on POSIX.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "apps/console/console.h"
#include "apps/console/secret_input.h"

namespace {

std::string program_folder() {
  std::error_code problem;
  return std::filesystem::read_symlink("/proc/self/exe", problem).parent_path().string();
}

}  // namespace

int main(int count, char** words) {
  std::ios::sync_with_stdio(false);
  console::Console console{std::cout,
                           std::cerr,
                           [](std::string_view name) -> std::optional<std::string> {
                             const char* value = std::getenv(std::string(name).c_str());
                             if (value == nullptr) return std::nullopt;
                             return value;
                           },
                           program_folder(),
                           isatty(STDERR_FILENO) == 1,
                           &std::cin};
  console.ask_secret = console::secret_input();
  const int code = console::program({words + 1, words + count}, console);
  if (std::cout.flush()) return code;
  std::cerr << "error 57: the output could not be written\n";
  return console::exit_failed;
}
