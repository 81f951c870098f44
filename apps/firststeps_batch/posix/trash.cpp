#include "apps/firststeps_batch/posix/trash.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

namespace firststeps_batch {
namespace {

namespace fs = std::filesystem;

constexpr int most_names_tried = 10000;

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

fs::path home_trash() {
  const std::string data = environment("XDG_DATA_HOME");
  if (!data.empty()) return fs::path(data) / "Trash";
  return fs::path(environment("HOME")) / ".local/share/Trash";
}

dev_t device_of(const fs::path& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_dev : dev_t{};
}

fs::path top_folder(const fs::path& file) {
  fs::path top = file.parent_path();
  while (top.has_relative_path() && device_of(top.parent_path()) == device_of(top)) top = top.parent_path();
  return top;
}

/// As in a URL, the slashes kept.
std::string escaped(const std::string& path) {
  constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~/";
  std::string text;
  for (const char character : path) {
    if (plain.find(character) != std::string_view::npos) {
      text += character;
      continue;
    }
    std::array<char, 4> code{};
    std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(character)));
    text += code.data();
  }
  return text;
}

bool write_note(const fs::path& note, const fs::path& original) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(note.c_str(), "wx"), std::fclose);
  if (!file) return false;
  std::array<char, 32> date{};
  const std::time_t now = std::time(nullptr);
  std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", std::localtime(&now));
  return std::fprintf(file.get(), "[Trash Info]\nPath=%s\nDeletionDate=%s\n", escaped(original.string()).c_str(),
                      date.data()) > 0;
}

bool move_into(const fs::path& trash, const fs::path& file, const fs::path& original) {
  std::error_code problem;
  for (const char* part : {"files", "info"}) {
    fs::create_directories(trash / part, problem);
    if (problem) return false;
    fs::permissions(trash, fs::perms::owner_all, problem);
  }
  for (int n = 1; n <= most_names_tried; ++n) {
    const std::string name = file.filename().string() + (n == 1 ? "" : "." + std::to_string(n));
    const fs::path note = trash / "info" / (name + ".trashinfo"), target = trash / "files" / name;
    if (fs::exists(note, problem) || fs::exists(target, problem)) continue;
    if (!write_note(note, original)) return false;
    fs::rename(file, target, problem);
    if (!problem) return true;
    fs::remove(note, problem);
    return false;
  }
  return false;
}

}  // namespace

bool move_to_trash(const fs::path& file) {
  std::error_code problem;
  const fs::path absolute = fs::absolute(file, problem);
  if (problem) return false;
  if (move_into(home_trash(), absolute, absolute)) return true;
  const fs::path top = top_folder(absolute);
  return move_into(top / (".Trash-" + std::to_string(getuid())), absolute, absolute.lexically_relative(top));
}

}  // namespace firststeps_batch
