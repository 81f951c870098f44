#include "wizard/targets_page.h"

namespace wizard {

form::Control& TargetsPage::box(std::size_t field) const {
  return context_.form.at("txtvorgabe", static_cast<int>(field));
}

void TargetsPage::show(const database::SettingsRecord& settings, GlucoseUnit unit) {
  unit_ = shown_unit_ = unit;
  for (std::size_t field = 0; field < all_fields; ++field) {
    const std::int16_t value = settings.*target_members[field];
    const std::string text = field < glucose_fields ? shown_value(value, unit) : std::to_string(value);
    box(field).set_text(text);
    shown_[field] = {text, value};
  }
  change_unit(unit);
}

void TargetsPage::change_unit(GlucoseUnit unit) {
  for (form::Control* label : context_.form.array("lblUnit")) label->set_caption(unit_caption(unit));
  if (unit == unit_) return;
  for (std::size_t field = 0; field < glucose_fields; ++field)
    if (const auto text = converted(box(field).text(), unit)) box(field).set_text(*text);
  unit_ = unit;
}

std::optional<std::int16_t> TargetsPage::value(std::size_t field) const {
  const std::string& text = box(field).text();
  // Blood pressure is typed as a whole number, as mg/dl are.
  if (field >= glucose_fields) return in_mg_dl(text, GlucoseUnit::MgDl);
  if (unit_ == shown_unit_ && text == shown_[field].text) return shown_[field].value;
  return in_mg_dl(text, unit_);
}

bool TargetsPage::refuse(std::size_t field, long message) {
  context_.message(message, message_style::critical_system_modal);
  context_.form.request_focus(box(field));
  return false;
}

bool TargetsPage::check_glucose() {
  std::array<std::int16_t, glucose_fields> values{};
  for (std::size_t field = 0; field < glucose_fields; ++field) {
    const auto typed = value(field);
    if (!typed) return refuse(field, 611);
    values[field] = *typed;
  }
  const auto [lower, upper, hypo, hyper] = values;
  if (lower <= 0 || lower >= upper) return refuse(0, 608);
  if (hypo <= 0 || hypo > lower) return refuse(2, 609);
  if (hyper < upper) return refuse(3, 610);
  return true;
}

void TargetsPage::gather(database::SettingsRecord& settings) const {
  for (std::size_t field = 0; field < all_fields; ++field)
    if (const auto typed = value(field)) settings.*target_members[field] = *typed;
}

void TargetsPage::gather_presets(database::SettingsRecord& settings) const {
  for (std::size_t field = 0; field < all_fields; ++field) settings.*target_members[field] = shown_[field].value;
}

}  // namespace wizard
