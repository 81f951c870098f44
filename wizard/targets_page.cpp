#include "wizard/targets_page.h"

#include <fmt/core.h>

#include <algorithm>

#include "support/measured_value.h"
#include "support/text.h"
#include "support/user_locale.h"
#include "wizard/option_groups.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/presets.h"
#include "wizard/summary_page.h"

namespace wizard {
namespace {

constexpr long no_number = 611, number_wanted = 621, separator_meant = 622, range_meant = 623;

/// The text with the user's decimal separator instead of the other one.
std::string with_separator(std::string text) {
  const char separator = support::user_locale().decimal_separator;
  std::ranges::replace(text, separator == ',' ? '.' : ',', separator);
  return text;
}

}  // namespace

std::string target_name(const form::Form& form, std::size_t field) {
  const std::string& caption = form.at("lblVorgabe", static_cast<int>(field)).caption();
  return form::plain_caption(caption.substr(0, caption.rfind(':')));
}

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

bool TargetsPage::is_untouched(std::size_t field) const {
  const bool same_unit = field >= glucose_fields || unit_ == shown_unit_;
  return same_unit && box(field).text() == shown_[field].text;
}

std::optional<std::int16_t> TargetsPage::value(std::size_t field) const {
  const std::string& text = box(field).text();
  if (is_untouched(field)) return shown_[field].value;
  // Blood pressure is a whole number, as mg/dl are.
  return in_mg_dl(text, field < glucose_fields ? unit_ : GlucoseUnit::MgDl);
}

bool TargetsPage::refuse(std::size_t field, const std::string& message) {
  context_.ports.user->message_box(message, message_style::critical_system_modal, context_.form.caption());
  context_.form.request_focus(box(field));
  return false;
}

/// A message that names the field without a number, and the decimal separator or the range that is expected.
std::string TargetsPage::number_message(std::size_t field) const {
  const InstallationConfig& config = context_.config;
  const std::string text(support::trim(box(field).text())), mended = with_separator(text);
  std::string hint = config.text(number_wanted, {unit_ == GlucoseUnit::MgDl ? "120" : with_separator("5.6")});
  if (support::parse_number(text))
    hint = config.text(range_meant, {smallest_value(unit_), largest_value(unit_), unit_caption(unit_)});
  else if (support::parse_number(mended))
    hint = config.text(separator_meant, {std::string(1, support::user_locale().decimal_separator), mended});
  return config.text(no_number, {target_name(context_.form, field), hint});
}

bool TargetsPage::check_glucose() {
  std::array<std::int16_t, glucose_fields> values{};
  for (std::size_t field = 0; field < glucose_fields; ++field) {
    const auto shown = in_mg_dl(box(field).text(), unit_);
    if (!shown) return refuse(field, number_message(field));
    values[field] = *shown;
  }
  const auto [lower, upper, hypo, hyper] = values;
  const InstallationConfig& config = context_.config;
  if (lower <= 0 || lower >= upper) return refuse(0, config.text(608));
  if (hypo <= 0 || hypo > lower) return refuse(2, config.text(609));
  if (hyper < upper) return refuse(3, config.text(610));
  return true;
}

void TargetsPage::gather(database::SettingsRecord& settings) const {
  for (std::size_t field = 0; field < all_fields; ++field)
    if (const auto typed = value(field)) settings.*target_members[field] = *typed;
}

void TargetsPage::gather_presets(database::SettingsRecord& settings) const {
  for (std::size_t field = 0; field < all_fields; ++field) settings.*target_members[field] = shown_[field].value;
}

namespace {

using enum form::Kind;

// `txtvorgabe` runs over both pages: one array cannot start twice, so 0 to 3 are the glucose values and 4 to 7 the
// blood pressure values. One control, one line.
// clang-format off
constexpr form::ControlRow glucose_target_controls[] = {
    grid::heading("Blutzuckerziele", "L4707"),
    grid::purpose("Tragen Sie die Werte ein, die Ihr Arzt mit Ihnen vereinbart hat.", "L4727"),
    {"lblVorgabe", 0, Label, "", grid::value_label(0), "Zielbereich &von:", "L4756"},
    {"txtvorgabe", 0, TextBox, "", grid::value_field(0), "", "", true, true},
    {"lblUnit", 0, Label, "", grid::unit(0), "mg/dl"},
    {"lblVorgabe", 1, Label, "", grid::value_label(1), "Zielbereich &bis:", "L4757"},
    {"txtvorgabe", 1, TextBox, "", grid::value_field(1), "", "", true, true},
    {"lblUnit", 1, Label, "", grid::unit(1), "mg/dl"},
    {"lblVorgabe", 2, Label, "", grid::value_label(2), "Hypoglykämie: <=", "L4758"},
    {"txtvorgabe", 2, TextBox, "", grid::value_field(2), "", "", true, true},
    {"lblUnit", 2, Label, "", grid::unit(2), "mg/dl"},
    {"lblVorgabe", 3, Label, "", grid::value_label(3), "Hyperglykämie: >=", "L4759"},
    {"txtvorgabe", 3, TextBox, "", grid::value_field(3), "", "", true, true},
    {"lblUnit", 3, Label, "", grid::unit(3), "mg/dl"},
    {"lblTargetHint", -1, Label, "", {120, grid::line(4) + 180, 6360, 1200}, "Hypoglykämie (Unterzuckerung), Hyperglykämie (Überzuckerung)", "L4760"},
    grid::why(),
};
// clang-format on

// clang-format off
constexpr form::ControlRow pressure_target_controls[] = {
    grid::heading("Blutdruckziele", "L4708"),
    grid::purpose("Tragen Sie die Werte ein, die Ihr Arzt mit Ihnen vereinbart hat.", "L4728"),
    {"lblVorgabe", 4, Label, "", grid::value_label(0), "Oberer Wert (systolisch) &von:", "L4761"},
    {"txtvorgabe", 4, TextBox, "", grid::value_field(0), "", "", true, true},
    {"lblPressureUnit", 0, Label, "", grid::unit(0), "mmHg", "L4765"},
    {"lblVorgabe", 5, Label, "", grid::value_label(1), "Oberer Wert (systolisch) &bis:", "L4762"},
    {"txtvorgabe", 5, TextBox, "", grid::value_field(1), "", "", true, true},
    {"lblPressureUnit", 1, Label, "", grid::unit(1), "mmHg", "L4765"},
    {"lblVorgabe", 6, Label, "", grid::value_label(2), "Unterer Wert (diastolisch) v&on:", "L4763"},
    {"txtvorgabe", 6, TextBox, "", grid::value_field(2), "", "", true, true},
    {"lblPressureUnit", 2, Label, "", grid::unit(2), "mmHg", "L4765"},
    {"lblVorgabe", 7, Label, "", grid::value_label(3), "Unterer Wert (diastolisch) b&is:", "L4764"},
    {"txtvorgabe", 7, TextBox, "", grid::value_field(3), "", "", true, true},
    {"lblPressureUnit", 3, Label, "", grid::unit(3), "mmHg", "L4765"},
    grid::why(),
};
// clang-format on

constexpr TextLimit target_limits[] = {{"txtvorgabe", 10}};

void preset_targets(Context& context, Pages& pages, const Stored& stored) {
  pages.targets.show(stored.settings, GlucoseUnit{static_cast<std::int16_t>(chosen_option(context.form, "optBGUnit"))});
}

bool leave_glucose_targets(Context&, Pages& pages) { return pages.targets.check_glucose(); }
void gather_targets(const Context&, const Pages& pages, Choices& choices) { pages.targets.gather(choices.settings); }

std::vector<std::string> sum_up_glucose(const Context& context, const Choices& choices) {
  const GlucoseUnit unit{static_cast<std::int16_t>(choices.option("optBGUnit"))};
  const auto shown = [&](std::size_t field) { return shown_value(choices.settings.*target_members[field], unit); };
  return {context.config.text(4835, {shown(0), shown(1), shown(2), shown(3), unit_caption(unit)})};
}

std::vector<std::string> sum_up_pressure(const Context& context, const Choices& choices) {
  const auto shown = [&](std::size_t field) { return std::to_string(choices.settings.*target_members[field]); };
  return {context.config.text(4838, {shown(4), shown(5), shown(6), shown(7)})};
}

}  // namespace

constinit const Page glucose_target_page{.tag = "Therapie_BZ",
                                         .step = "Therapie_bz",
                                         .shown_in = Edition::Standard,
                                         .patients_own = true,
                                         .controls = glucose_target_controls,
                                         .illustration = Illustration::Therapy,
                                         .why = 4934,
                                         .limits = target_limits,
                                         .preset = preset_targets,
                                         .leave = leave_glucose_targets,
                                         .gather = gather_targets,
                                         .summary = sum_up_glucose,
                                         .findings = find_in_glucose_targets};
constinit const Page pressure_target_page{.tag = "Therapie_BP",
                                          .step = "Therapie_bp",
                                          .shown_in = Edition::Standard,
                                          .patients_own = true,
                                          .controls = pressure_target_controls,
                                          .illustration = Illustration::Therapy,
                                          .why = 4935,
                                          .limits = target_limits,
                                          .summary = sum_up_pressure,
                                          .findings = find_in_pressure_targets};

namespace {

constexpr long is_no_number = 4864, is_out_of_range = 4865, is_rounded = 4866, is_not_below = 4867,
               unusual_pressure = 4868, is_empty = 4869, mg_dl_meant = 4870, mmol_l_meant = 4871,
               unusual_glucose = 4872;

/// The range of target values that physicians usually agree on; a value outside of it is a finding.
struct Usual {
  std::int16_t least, most;
};
constexpr Usual usual_glucose{36, 600};                             ///< mg/dl; 2 to 33 mmol/l
constexpr Usual usual_systolic{70, 220}, usual_diastolic{40, 140};  ///< mmHg

bool is_usual(const Usual& usual, double value) { return value >= usual.least && value <= usual.most; }

/// A field as it was typed, and as it will be stored and shown again.
struct Target {
  std::size_t field;
  std::string name, typed, shown;
  std::int16_t stored;
  GlucoseUnit unit;
};

Target target_at(const Context& context, const Choices& choices, std::size_t field) {
  const bool glucose = field < 4;
  const GlucoseUnit unit =
      glucose ? GlucoseUnit{static_cast<std::int16_t>(choices.option("optBGUnit"))} : GlucoseUnit::MgDl;
  const std::int16_t stored = choices.settings.*target_members[field];
  const std::string& text = context.form.at("txtvorgabe", static_cast<int>(field)).text();
  return {field, target_name(context.form, field), support::trim(text), shown_value(stored, unit), stored, unit};
}

void add(Findings& findings, const Target& target, Severity severity, long text, std::vector<std::string> values) {
  findings.push_back({.severity = severity,
                      .control = fmt::format("txtvorgabe({})", target.field),
                      .text = text,
                      .values = std::move(values)});
}

void find_otherwise_stored(const Pages& pages, const Target& target, Findings& findings) {
  if (pages.targets.is_untouched(target.field)) return;
  const auto& [field, name, typed, shown, stored, unit] = target;
  const auto number = support::parse_number(typed);
  if (typed.empty()) return add(findings, target, Severity::Warning, is_empty, {name, shown});
  if (!number) return add(findings, target, Severity::Warning, is_no_number, {name, typed, shown});
  if (!in_mg_dl(typed, unit)) return add(findings, target, Severity::Warning, is_out_of_range, {name, typed, shown});
  if (support::parse_number(shown) != number) add(findings, target, Severity::Note, is_rounded, {name, typed, shown});
}

void find_unusual_glucose(const Target& target, Findings& findings) {
  if (is_usual(usual_glucose, target.stored)) return;
  const auto& [field, name, typed, shown, stored, unit] = target;
  const double number = support::parse_number(shown).value_or(0);
  const std::string caption(unit_caption(unit));
  long text = unusual_glucose;
  if (unit == GlucoseUnit::MmolL && stored > usual_glucose.most && is_usual(usual_glucose, number)) text = mg_dl_meant;
  if (unit == GlucoseUnit::MgDl && is_usual(usual_glucose, number * support::mg_dl_per_mmol_l)) text = mmol_l_meant;
  add(findings, target, Severity::Warning, text, {name, shown, caption});
}

void find_not_below(const Target& lower, const Target& upper, Findings& findings) {
  if (lower.stored < upper.stored) return;
  add(findings, lower, Severity::Warning, is_not_below, {lower.name, lower.shown, upper.name, upper.shown});
}

}  // namespace

void find_in_glucose_targets(const Context& context, const Pages& pages, const Choices& choices, Findings& findings) {
  for (std::size_t field = 0; field < 4; ++field) {
    const Target target = target_at(context, choices, field);
    find_otherwise_stored(pages, target, findings);
    find_unusual_glucose(target, findings);
  }
  find_not_below(target_at(context, choices, 0), target_at(context, choices, 1), findings);
}

void find_in_pressure_targets(const Context& context, const Pages& pages, const Choices& choices, Findings& findings) {
  for (std::size_t field = 4; field < 8; ++field) {
    const Target target = target_at(context, choices, field);
    find_otherwise_stored(pages, target, findings);
    if (!is_usual(field < 6 ? usual_systolic : usual_diastolic, target.stored))
      add(findings, target, Severity::Warning, unusual_pressure, {target.name, target.shown});
  }
  for (const auto& [lower, upper] : {std::pair<std::size_t, std::size_t>{4, 5}, {6, 7}, {7, 5}})
    find_not_below(target_at(context, choices, lower), target_at(context, choices, upper), findings);
}

}  // namespace wizard
