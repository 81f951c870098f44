// Any bytes as a language table: it gives texts or no table at all, and every line break in a text is a Windows one.
#include "fuzz/target.h"
#include "support/encoding.h"
#include "support/file_system.h"
#include "support/language.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::ScratchFolder folder;
  static const bool made = std::filesystem::create_directories(folder.path() / "texts");
  fuzz::promise(made, "a folder for the table");
  static const std::string windows_folder = support::host_file_system().windows_path(folder.path().string());
  const std::string_view bytes = fuzz::text_of(data, size);
  folder.write("texts/de.ini", bytes);
  if (const auto table = support::open_text_table(windows_folder, "de")) {
    for (const long number : {-1L, 0L, 1L, 2L, 100L, 4353L, 2147483647L}) static_cast<void>(table->loadres(number));
  }
  const std::string_view name = bytes.substr(0, bytes.find('\n'));
  const auto escaped = support::open_text_table(windows_folder, name);
  fuzz::promise(!escaped || name.empty() || support::equal_ignoring_case(name, "de"), "no name leads to another file");
  return 0;
}
