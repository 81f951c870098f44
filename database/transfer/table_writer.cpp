#include "database/transfer/table_writer.h"

#include <fmt/core.h>

#include <algorithm>

#include "database/engine/engine_error.h"
#include "database/transfer/value_text.h"
#include "support/encoding.h"

namespace transfer {
namespace {

constexpr std::string_view forbidden = "<>:\"/\\|?*";
/// Names of devices, whatever ending stands behind them.
constexpr std::string_view devices[] = {"con", "prn", "aux", "nul", "com", "lpt"};

std::string safe_name(const std::string& table) {
  std::string name = table;
  std::ranges::replace_if(
      name,
      [](char letter) {
        return static_cast<unsigned char>(letter) < 0x20 || forbidden.find(letter) != std::string_view::npos;
      },
      '_');
  const std::string lower = support::to_lower(name.substr(0, 3));
  const bool is_device = name.size() <= 4 && std::ranges::find(devices, lower) != std::end(devices);
  // The underscore at the beginning is that of the lists.
  return name.empty() || is_device || name.front() == '_' ? "t" + name : name;
}

}  // namespace

std::string FileNames::next(const std::string& table) {
  const std::string name = safe_name(table);
  for (int number = 1;; ++number) {
    std::string file = name + (number > 1 ? fmt::format("-{}", number) : "") + ending_;
    const std::string folded = support::to_lower(file);
    if (std::ranges::find(taken_, folded) != taken_.end()) continue;
    taken_.push_back(folded);
    return file;
  }
}

void require_encodable(std::string_view text, TextEncoding encoding) {
  if (encoding == TextEncoding::Utf8 || support::fits_cp1252(text)) return;
  throw support::RuntimeError(cannot_convert, "It holds a character that code page 1252 does not have.");
}

std::string encoded(std::string text, TextEncoding encoding) {
  if (encoding == TextEncoding::Utf8) return text;
  require_encodable(text, encoding);
  return support::cp1252_from_utf8(text);
}

}  // namespace transfer
