#include "wizard/form/form.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "support/encoding.h"
#include "support/error.h"
#include "support/text.h"

namespace form {
namespace {

bool same_name(std::string_view left, std::string_view right) noexcept {
  constexpr auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

template <typename Pointer>
std::vector<Pointer> members(const std::vector<std::unique_ptr<Control>>& controls, std::string_view name) {
  std::vector<Pointer> found;
  for (const auto& control : controls)
    if (control->index() >= 0 && same_name(control->name(), name)) found.push_back(control.get());
  std::ranges::sort(found, {}, [](const Control* control) { return control->index(); });
  return found;
}

std::string path_of(std::string_view name, int index) {
  return index < 0 ? std::string(name) : fmt::format("{}({})", name, index);
}

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

Control::Control(Form& form, const ControlRow& row, Control* parent)
    : form_(form),
      name_(row.name),
      index_(row.index),
      kind_(row.kind),
      parent_(parent),
      editable_(row.editable),
      tag_(row.tag),
      caption_(row.caption),
      visible_(row.visible),
      bounds_(row.bounds) {}

std::string Control::path() const { return path_of(name_, index_); }

std::int32_t Control::selected_item_data() const noexcept {
  return list_index_ < 0 ? 0 : items_[static_cast<std::size_t>(list_index_)].item_data;
}

template <typename Member, typename Value>
void Control::assign(Member& member, const Value& value, Property property) {
  if (member == value) return;
  member = value;
  form_.changed(*this, property);
}

void Control::set_tag(std::string_view tag) { assign(tag_, tag, Property::Tag); }
void Control::set_caption(std::string_view caption) { assign(caption_, caption, Property::Caption); }
void Control::set_tooltip(std::string_view tooltip) { assign(tooltip_, tooltip, Property::ToolTip); }
void Control::set_font(std::string_view font) { assign(font_, font, Property::Font); }
void Control::set_maximum(int maximum) { assign(maximum_, maximum, Property::Maximum); }
void Control::set_visible(bool visible) { assign(visible_, visible, Property::Visible); }
void Control::set_enabled(bool enabled) { assign(enabled_, enabled, Property::Enabled); }
void Control::set_interval(int milliseconds) { assign(interval_, milliseconds, Property::Interval); }
void Control::set_picture(std::string_view picture) { assign(picture_, picture, Property::Picture); }
void Control::set_bounds(const Bounds& bounds) { assign(bounds_, bounds, Property::Bounds); }
void Control::set_colours(const Colours& colours) { assign(colours_, colours, Property::Colours); }

void Control::set_text(std::string_view text) {
  assign(text_, text, Property::Text);
  if (kind_ != Kind::ComboBox) return;
  const auto match = std::ranges::find(items_, text_, &ListItem::text);
  assign(list_index_, match == items_.end() ? -1 : static_cast<int>(match - items_.begin()), Property::ListIndex);
}

void Control::set_value(int value) {
  if (kind_ == Kind::OptionButton && value != 0 && index_ >= 0)
    for (Control* other : form_.array(name_))
      if (other != this) other->assign(other->value_, 0, Property::Value);
  assign(value_, value, Property::Value);
}

void Control::set_items(std::vector<ListItem> items) {
  set_list_index(-1);
  if (items_ == items) return;
  items_ = std::move(items);
  form_.changed(*this, Property::List);
}

void Control::set_list_index(int list_index) {
  const bool selected = list_index >= 0 && list_index < static_cast<int>(items_.size());
  // Two entries may have one text, so the index is kept and not searched by the text again.
  assign(text_, selected ? items_[static_cast<std::size_t>(list_index)].text : std::string(), Property::Text);
  assign(list_index_, selected ? list_index : -1, Property::ListIndex);
}

Control& Form::add(const ControlRow& row) {
  if (find(row.name, row.index))
    throw support::RuntimeError(support::error_number::already_loaded,
                                "Object already loaded: " + path_of(row.name, row.index));
  Control* parent = row.parent.empty() ? nullptr : find_path(row.parent);
  if (!parent && !row.parent.empty())
    throw support::RuntimeError(support::error_number::no_such_element,
                                "No such container: " + std::string(row.parent));
  controls_.push_back(std::make_unique<Control>(*this, row, parent));
  if (observer_) observer_->control_added(*controls_.back());
  return *controls_.back();
}

Control* Form::find(std::string_view name, int index) noexcept {
  const auto match = std::ranges::find_if(
      controls_, [&](const auto& control) { return control->index() == index && same_name(control->name(), name); });
  return match == controls_.end() ? nullptr : match->get();
}

const Control* Form::find(std::string_view name, int index) const noexcept {
  return const_cast<Form*>(this)->find(name, index);
}

Control* Form::find_path(std::string_view path) noexcept {
  const auto open = path.find('(');
  if (open == std::string_view::npos) return find(path);
  int index = -1;
  const char* const end = path.data() + path.size();
  const auto [rest, error] = std::from_chars(path.data() + open + 1, end, index);
  if (error != std::errc() || rest + 1 != end || *rest != ')') return nullptr;
  return find(path.substr(0, open), index);
}

Control& Form::at(std::string_view name, int index) {
  if (Control* control = find(name, index)) return *control;
  throw support::RuntimeError(support::error_number::no_such_element, "No such control: " + path_of(name, index));
}

const Control& Form::at(std::string_view name, int index) const { return const_cast<Form*>(this)->at(name, index); }

std::vector<Control*> Form::array(std::string_view name) { return members<Control*>(controls_, name); }

std::vector<const Control*> Form::array(std::string_view name) const {
  return members<const Control*>(controls_, name);
}

void Form::request_focus(Control& control) {
  focus_ = &control;
  if (observer_) observer_->focus_requested(control);
}

void Form::request_redraw(Control& control) {
  if (observer_) observer_->redraw_requested(control);
}

void Form::changed(const Control& control, Property property) {
  if (observer_) observer_->property_changed(control, property);
}

std::string plain_caption(std::string caption) {
  support::replace(caption, "&", "");
  for (const std::string_view end : {":", " *"})
    if (caption.ends_with(end)) caption.erase(caption.size() - end.size());
  return caption;
}

void MatchList(Control& list, std::string_view value) {
  support::Procedure procedure{"code!MatchList"};
  procedure.step([&] {
    const int entry = matching_entry(list.items(), value);
    list.set_list_index(entry);
    if (entry < 0 && list.editable()) list.set_text(value);
    list.set_enabled(list.editable() || !list.items().empty());
  });
}

void SetProgressbarColor(Control& bar, std::uint32_t colour) {
  support::Procedure procedure{"code!SetProgressbarColor"};
  procedure.step([&] { bar.set_colours({.bar = colour, .background = 0xFFFFFF}); });
}

}  // namespace form
