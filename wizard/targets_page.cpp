#include "wizard/targets_page.h"

#include "support/common_code.h"

namespace wizard {

namespace {

using database::SettingsRecord;

/// By index of `txtvorgabe`.
constexpr std::int16_t SettingsRecord::*members[] = {
    &SettingsRecord::BGTargetMin,    &SettingsRecord::BGTargetMax,    &SettingsRecord::BGHypo,
    &SettingsRecord::BGHyper,        &SettingsRecord::BPTargetSysMin, &SettingsRecord::BPTargetSysMax,
    &SettingsRecord::BPTargetDiaMin, &SettingsRecord::BPTargetDiaMax,
};

}  // namespace

void TargetsPage::show(const SettingsRecord& settings, GlucoseUnit unit) {
  unit_ = shown_unit_ = unit;
  for (int field = 0; field < static_cast<int>(std::size(members)); ++field) {
    const std::int16_t value = settings.*members[field];
    const std::string text = field < glucose_fields ? shown_value(value, unit) : std::to_string(value);
    context_.form.at("txtvorgabe", field).set_text(text);
    shown_[static_cast<std::size_t>(field)] = {text, value};
  }
  change_unit(unit);
}

void TargetsPage::change_unit(GlucoseUnit unit) {
  for (form::Control* label : context_.form.array("lblUnit")) label->set_caption(unit_caption(unit));
  if (unit == unit_) return;
  for (int field = 0; field < glucose_fields; ++field) {
    form::Control& box = context_.form.at("txtvorgabe", field);
    if (const auto text = converted(box.text(), unit)) box.set_text(*text);
  }
  unit_ = unit;
}

std::optional<std::int16_t> TargetsPage::glucose_value(int field) const {
  const std::string& text = context_.form.at("txtvorgabe", field).text();
  const Shown& shown = shown_[static_cast<std::size_t>(field)];
  if (unit_ == shown_unit_ && text == shown.text) return shown.value;
  return in_mg_dl(text, unit_);
}

bool TargetsPage::refuse(int field, long message) {
  context_.message(message, message_style::critical_system_modal);
  context_.form.request_focus(context_.form.at("txtvorgabe", field));
  return false;
}

bool TargetsPage::check_glucose() {
  std::array<std::int16_t, glucose_fields> values{};
  for (int field = 0; field < glucose_fields; ++field) {
    const auto value = glucose_value(field);
    if (!value) return refuse(field, 611);
    values[static_cast<std::size_t>(field)] = *value;
  }
  const auto [lower, upper, hypo, hyper] = values;
  if (lower <= 0 || lower >= upper) return refuse(0, 608);
  if (hypo <= 0 || hypo > lower) return refuse(2, 609);
  if (hyper < upper) return refuse(3, 610);
  return true;
}

void TargetsPage::gather(SettingsRecord& settings) const {
  for (int field = 0; field < static_cast<int>(std::size(members)); ++field) {
    const auto value = field < glucose_fields
                           ? glucose_value(field)
                           : in_mg_dl(context_.form.at("txtvorgabe", field).text(), GlucoseUnit::MgDl);
    if (value) settings.*members[field] = *value;
  }
}

void TargetsPage::gather_presets(SettingsRecord& settings) const {
  for (std::size_t field = 0; field < shown_.size(); ++field) settings.*members[field] = shown_[field].value;
}

}  // namespace wizard
