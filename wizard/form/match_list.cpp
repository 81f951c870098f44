#include "wizard/form/match_list.h"

#include <algorithm>
#include <optional>

#include "support/encoding.h"
#include "support/error.h"
#include "support/text.h"

namespace form {

namespace {

int matching_entry(const std::vector<ListItem>& items, std::string_view value) {
  auto match = items.end();
  if (const auto number = support::parse_whole<std::int32_t>(value))
    match = std::ranges::find(items, *number, &ListItem::item_data);
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
