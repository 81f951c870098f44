#include "apps/firststeps_batch/batch_user.h"

#include <utility>

#include "support/encoding.h"
#include "support/error.h"
#include "support/shell.h"

namespace firststeps_batch {
namespace {

constexpr int ok = 1, cancel = 2, no = 7;
constexpr std::uint32_t buttons_mask = 0xF, ok_only = 0, ok_cancel = 1, yes_no = 4;
constexpr std::int32_t twips_per_character = 105;

/// The answer that changes nothing.
int careful_answer(std::uint32_t style) {
  const std::uint32_t buttons = style & buttons_mask;
  if (buttons == ok_only) return ok;
  return buttons == yes_no ? no : cancel;
}

}  // namespace

int BatchUser::message_box(std::string_view text, std::uint32_t style, std::string_view) {
  messages_.emplace_back(text);
  if ((style & buttons_mask) == ok_cancel)
    throw support::RuntimeError(support::error_number::cancelled, "There is nobody to answer the question.");
  return careful_answer(style);
}

std::optional<std::string> BatchUser::choose_folder(std::string_view) {
  return std::exchange(next_folder_, std::nullopt);
}

bool BatchUser::open_file(std::string_view) { return false; }

std::vector<std::string> BatchUser::recycle(std::string_view folder, std::string_view pattern) {
  return recycle_ ? recycle_(folder, pattern) : std::vector<std::string>();
}

bool BatchUser::has_recycle_bin(std::string_view folder) { return for_good_ || support::has_recycle_bin(folder); }

bool BatchUser::is_network_path(std::string_view path) { return support::is_network_path(path); }

std::int32_t BatchUser::text_width(std::string_view text, std::string_view) {
  return static_cast<std::int32_t>(support::character_count(text)) * twips_per_character;
}

void BatchUser::set_topmost(bool) {}

}  // namespace firststeps_batch
