#include "wizard/form/match_list.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "support/encoding.h"
#include "support/error.h"

namespace form {

namespace {

std::optional<std::int32_t> whole_number(std::string_view text) {
  std::int32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || rest != end) return std::nullopt;
  return number;
}

int matching_entry(const std::vector<ListItem>& items, std::string_view value) {
  auto match = items.end();
  if (const auto number = whole_number(value)) match = std::ranges::find(items, *number, &ListItem::item_data);
  if (match == items.end())
    match = std::ranges::find_if(items,
                                 [&](const ListItem& item) { return support::equal_ignoring_case(item.text, value); });
  return match == items.end() ? -1 : static_cast<int>(match - items.begin());
}

}  // namespace

void MatchList(Control& list, std::string_view value) {
  support::Procedure procedure{"code!MatchList"};
  procedure.step([&] {
    const int entry = matching_entry(list.items(), value);
    list.set_list_index(entry);
    if (entry < 0 && list.editable()) list.set_text(value);
    list.set_enabled(list.editable() || !list.items().empty());
  });
}

}  // namespace form
