#include "support/error_journal.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <fstream>

#include "support/encoding.h"
#include "support/host_file.h"
#include "support/host_path.h"

namespace support {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view text_mark = "APPLICATION LOG (";
constexpr std::string_view head_rule = "--------------------------------------------";
constexpr std::string_view left_out = "…";
constexpr std::size_t longest_text = 300;

std::string time_text(std::time_t now, const char* picture) {
  std::array<char, 32> text{};
  const std::tm* const local = std::localtime(&now);
  return {text.data(), local != nullptr ? std::strftime(text.data(), text.size(), picture, local) : 0};
}

/// "ddmmyyyyhhnnss".
std::string stamp(std::time_t now) { return time_text(now, "%d%m%Y%H%M%S"); }

std::string_view last_component(std::string_view path) { return path.substr(path.find_last_of("/\\") + 1); }

bool is_journal(const fs::path& path) {
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return false;
  std::string beginning(text_mark.size(), '\0');
  std::ifstream file(path, std::ios::binary);
  return file.read(beginning.data(), static_cast<std::streamsize>(beginning.size())) && beginning == text_mark;
}

bool is_missing(const fs::path& path) {
  std::error_code ignored;
  return fs::symlink_status(path, ignored).type() == fs::file_type::not_found;
}

/// Renames the full journal to its second name. False if something else has that name.
bool put_aside(const fs::path& path) {
  fs::path aside = path;
  aside += ".1";
  if (!is_missing(aside) && !is_journal(aside)) return false;
  std::error_code failure;
  fs::rename(path, aside, failure);
  return !failure;
}

void leave_out_quoted(std::string& text) {
  constexpr std::string_view quotation_marks = "'\"";
  const std::size_t first = text.find_first_of(quotation_marks), last = text.find_last_of(quotation_marks);
  if (first != last) text.replace(first + 1, last - first - 1, left_out);
}

void leave_out_paths(std::string& text) {
  const std::size_t separator = text.find_first_of("/\\");
  if (separator == std::string::npos) return;
  const std::size_t blank = text.find_last_of(' ', separator);
  text.resize(blank == std::string::npos ? 0 : blank + 1);
  text += left_out;
}

}  // namespace

std::string journal_text(std::string_view description) {
  std::string text(description);
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
  leave_out_quoted(text);
  leave_out_paths(text);
  if (text.size() > longest_text) text.resize(longest_text);
  while (!text.empty() && !is_utf8(text)) text.pop_back();
  return text;
}

ErrorJournal::ErrorJournal(std::string host_path, JournalProgram program, Clock clock)
    : path_(std::move(host_path)),
      program_(std::move(program)),
      clock_(std::move(clock)),
      watch_([this](std::string_view label, const RuntimeError& error) { write(label, error); }) {}

void ErrorJournal::write(std::string_view label, const RuntimeError& error) const noexcept {
  try {
    append(fmt::format("{} {} {} {}\r\n", stamp(clock_()), label, error.number(), journal_text(error.what())));
  } catch (...) {
    // The journal must not disturb the work: this line is then missing in it, and nothing else happens.
  }
}

void ErrorJournal::append(std::string_view line) const {
  const fs::path path = std_path(path_);
  if (!is_missing(path) && !is_journal(path)) return;
  std::error_code failure;
  const std::uintmax_t size = fs::file_size(path, failure);
  if (!failure && size + line.size() > most_journal_bytes && !put_aside(path)) return;
  if (is_missing(path)) replace_host_file(path_, head());
  std::ofstream(path, std::ios::binary | std::ios::app) << line << std::flush;
}

std::string ErrorJournal::head() const {
  const std::time_t now = clock_();
  const std::array<std::array<std::string, 2>, 5> rows{
      {{"Software:", program_.software},
       {"Version:", program_.version},
       {"ExeName:", std::string(last_component(program_.executable))},
       {"IniName:", std::string(last_component(program_.settings_file))},
       {"Long Time", time_text(now, "%H:%M:%S")}}};
  std::string text = std::string(text_mark) + stamp(now) + ")\r\n" + std::string(head_rule) + "\r\n";
  for (const auto& [name, value] : rows) text.append(name).append(" ").append(value).append("\r\n");
  return text.append(head_rule).append("\r\n");
}

}  // namespace support
