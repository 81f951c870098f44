#include "support/common_code.h"

#include <algorithm>
#include <array>
#include <limits>

#include "support/encoding.h"
#include "support/error.h"
#include "support/file_system.h"
#include "support/harbinox.h"
#include "support/ini.h"
#include "support/user_locale.h"

namespace support {

namespace {

constexpr std::size_t schemes_buffer = 4095;

// Codes 20 to 31 stay: the bound is 20, decimal.
bool is_trimmed(char character) { return static_cast<unsigned char>(character) < 20 || character == ' '; }

std::int16_t saturated(std::size_t count) {
  constexpr auto most_counted = static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max());
  return static_cast<std::int16_t>(std::min(count, most_counted));
}

std::vector<std::string> split_text(std::string_view text, std::string_view delimiter) {
  std::vector<std::string> pieces;
  while (!text.empty()) {
    const auto end = delimiter.empty() ? std::string_view::npos : text.find(delimiter);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + delimiter.size());
  }
  return pieces;
}

std::string drive_of(std::string_view path) {
  std::string drive(first_characters(path, 2));
  if (!path.empty() && (drive.size() < 2 || drive.back() != '\\')) drive += '\\';
  return drive;
}

/// "C:\first\..\..\name": one "..\" for every folder below the first.
std::string shortened(std::string_view path) {
  const auto first_end = path.find('\\', first_characters(path, 3).size());
  if (first_end == std::string_view::npos) return std::string(path);
  const std::string_view deeper = path.substr(first_end + 1);
  std::string text(path.substr(0, first_end + 1));
  for (auto levels = std::count(deeper.begin(), deeper.end(), '\\'); levels > 0; --levels) text += "..\\";
  return text.append(path.substr(path.rfind('\\') + 1));
}

std::string part_of_path(std::string_view path, PathPart part) {
  const std::size_t name_start = path.rfind('\\') + 1;  // 0 where there is no backslash
  switch (part) {
    case PathPart::Drive:
      return drive_of(path);
    case PathPart::Folder:
      return std::string(path.substr(0, name_start));
    case PathPart::FileName:
      return std::string(path.substr(name_start));
    case PathPart::Shortened:
      return shortened(path);
  }
  return {};
}

struct ValueFormat {
  std::string_view unit;
  int default_decimals;
};

// By ValueKind. The kinds that are read with a fraction in daily life show one decimal where none are asked for.
constexpr std::array<ValueFormat, 7> value_formats = {
    {{" mg/dL", 0}, {" mmol/L", 1}, {" %", 1}, {" mg/l", 0}, {" kg", 1}, {" g", 0}, {" lbs", 1}}};

}  // namespace

std::string trim(std::string_view text) {
  Procedure procedure("code!trim");
  if (text.empty() || text.front() == '\0') return {};
  while (!text.empty() && is_trimmed(text.back())) text.remove_suffix(1);
  while (!text.empty() && is_trimmed(text.front())) text.remove_prefix(1);
  return std::string(text);
}

std::string_view strip(std::string_view text, std::string_view characters) noexcept {
  const auto first = text.find_first_not_of(characters);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::int16_t Split(std::string_view text, std::vector<std::string>& pieces, std::string_view delimiter) {
  Procedure procedure("code! Split");
  if (text.empty()) return -1;
  procedure.step([&] { pieces = split_text(text, delimiter); });
  return procedure.pending() ? std::int16_t{-1} : saturated(pieces.size() - 1);
}

void RemoveSlashes(std::string& path) {
  Procedure procedure("code!RemoveSlashes");
  procedure.step([&] {
    replace(path, "\\\\", "\\");
    if (path.starts_with('\\')) path.insert(path.begin(), '\\');
  });
}

std::int16_t GetSchemes(const IniFiles& ini, const FileSystem& files, std::string_view schemes_file,
                        std::vector<std::string>& names) {
  Procedure procedure("code!GetSchemes");
  std::int16_t count = 0;
  procedure.step([&] {
    if (!file_test(files, schemes_file)) return;
    const std::string list = ini.sections(schemes_file, {}, schemes_buffer);
    // Only what a NUL follows is whole.
    names = split_text(std::string_view(list).substr(0, list.rfind('\0') + 1), std::string_view("\0", 1));
    count = saturated(names.size());
  });
  return count;
}

std::string ExtractFromPath(std::string_view path, int part) {
  Procedure procedure("code!ExtractFromPath");
  if (part < static_cast<int>(PathPart::Drive) || part > static_cast<int>(PathPart::Shortened)) return {};
  std::string text;
  procedure.step([&] { text = part_of_path(path, static_cast<PathPart>(part)); });
  return text;
}

std::string to_mg_dl(double mmol_l) {
  const double whole = round_half_even(mmol_l * mg_dl_per_mmol_l);
  const bool fits =
      whole >= std::numeric_limits<std::int16_t>::min() && whole <= std::numeric_limits<std::int16_t>::max();
  return fits ? number_text(whole) : std::string();
}

std::string to_mmol_l(double mg_dl) {
  const auto rounded = parse_number(fixed_text(mg_dl * mmol_l_per_mg_dl, 1));
  return rounded ? number_text(static_cast<float>(*rounded)) : std::string();
}

std::string format_value(double value, ValueKind kind, int decimals, bool show_unit) {
  const ValueFormat& format = value_formats[static_cast<std::size_t>(kind)];
  const int places = decimals > 0 ? decimals : format.default_decimals;
  std::string text = value > 0 ? fixed_text(value, places) : number_text(value);
  return show_unit ? text.append(format.unit) : text;
}

}  // namespace support
