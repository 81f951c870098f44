#include "wizard/spoken.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "support/encoding.h"

namespace wizard {

namespace {

constexpr long required = 4921;

/// Pictures that say nothing more than the page says in words.
constexpr std::array<std::string_view, 9> decoration = {"Image1",         "imgOpen",       "imgNew",
                                                        "imgSidebarMark", "imgStartMark",  "imgCursorHand",
                                                        "imgcursorHand2", "imgMouseHand3", "imgSplitBtn"};
constexpr std::array<std::string_view, 2> required_fields = {"txtFirstName", "txtName"};

template <std::size_t Count>
bool is_one_of(const std::array<std::string_view, Count>& names, const form::Control& control) {
  return std::ranges::any_of(names,
                             [&](std::string_view name) { return support::equal_ignoring_case(name, control.name()); });
}

/// The control that stands `behind` places after this one; null if there is none, or if it lies in another container.
const form::Control* neighbour(const form::Form& form, const form::Control& control, std::ptrdiff_t behind) {
  const auto& all = form.controls();
  const auto at = std::ranges::find(all, &control, [](const auto& each) { return each.get(); });
  const std::ptrdiff_t place = at - all.begin() + behind;
  if (place < 0 || place >= static_cast<std::ptrdiff_t>(all.size())) return nullptr;
  const form::Control* found = all[static_cast<std::size_t>(place)].get();
  return found->parent() == control.parent() ? found : nullptr;
}

bool is_unit(const form::Control& control) {
  return support::equal_ignoring_case(control.name(), "lblUnit") ||
         support::equal_ignoring_case(control.name(), "lblPressureUnit");
}

std::string heading_of_page(const form::Form& form, int page) {
  const form::Control* heading = form.find("lblHeading", page);
  // The first page has a welcome text instead of a heading.
  if (!heading) heading = form.find("Label2");
  return heading ? form::plain_caption(heading->caption()) : std::string();
}

/// Speaks a field by the label before it and the unit behind it.
Spoken of_field(const form::Form& form, const InstallationConfig& config, const form::Control& field) {
  Spoken said;
  const form::Control* label = neighbour(form, field, -1);
  const form::Control* unit = neighbour(form, field, 1);
  if (label && label->kind() == form::Kind::Label) said.name = form::plain_caption(label->caption());
  if (unit && is_unit(*unit) && field.kind() == form::Kind::TextBox) said.name += ", " + unit->caption();
  // A text that fills its page is named by the page's heading.
  if (!field.editable() && field.kind() == form::Kind::TextBox && field.parent())
    said.name = heading_of_page(form, field.parent()->index());
  if (is_one_of(required_fields, field)) said.description = config.text(required);
  return said;
}

/// What a group of options is called: the box around them, else the label before the first of them, else the page's
/// heading.
std::string group_of(const form::Form& form, const form::Control& option) {
  const form::Control* around = option.parent();
  if (around && !around->caption().empty()) return form::plain_caption(around->caption());
  const form::Control* first = form.find(option.name(), 0);
  const form::Control* label = first ? neighbour(form, *first, -1) : nullptr;
  if (label && label->kind() == form::Kind::Label && label->name() != "lblPurpose")
    return form::plain_caption(label->caption());
  return around ? heading_of_page(form, around->index()) : std::string();
}

/// "Weiter >" shows an arrow, but would be read as "Weiter greater than".
std::string without_arrows(std::string caption) {
  if (caption.ends_with(" >")) caption.resize(caption.size() - 2);
  return caption.starts_with("< ") ? caption.substr(2) : caption;
}

/// The full title: the page may show it shortened.
Spoken of_chart(const form::Control& chart) { return {chart.tooltip(), {}, false}; }

}  // namespace

Spoken spoken(const form::Form& form, const InstallationConfig& config, const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Image:
      if (is_one_of(decoration, control)) return {{}, {}, true};
      return {control.caption(), {}, false};
    case form::Kind::TextBox:
    case form::Kind::ComboBox:
      return of_field(form, config, control);
    case form::Kind::OptionButton:
      return {form::plain_caption(control.caption()), group_of(form, control), false};
    case form::Kind::ChartOption:
      return of_chart(control);
    case form::Kind::Button:
      return {without_arrows(form::plain_caption(control.caption())), control.tooltip(), false};
    case form::Kind::Label:
      // A control without a text at the moment is not mentioned.
      return {form::plain_caption(control.caption()), {}, control.caption().empty()};
    case form::Kind::Frame:
      if (!control.parent()) return {heading_of_page(form, control.index()), {}, false};
      return {form::plain_caption(control.caption()), {}, false};
    default:
      return {form::plain_caption(control.caption()), {}, false};
  }
}

}  // namespace wizard
