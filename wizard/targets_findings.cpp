#include "wizard/targets_findings.h"

#include <fmt/core.h>

#include "support/measured_value.h"
#include "support/text.h"
#include "support/user_locale.h"

namespace wizard {

namespace {

constexpr long is_no_number = 4864, is_out_of_range = 4865, is_rounded = 4866, is_not_below = 4867,
               unusual_pressure = 4868, is_empty = 4869, mg_dl_meant = 4870, mmol_l_meant = 4871,
               unusual_glucose = 4872;

/// Target values that a physician may agree on; others are asked about.
struct Usual {
  std::int16_t least, most;
};
constexpr Usual usual_glucose{36, 600};                             ///< mg/dl; 2 to 33 mmol/l
constexpr Usual usual_systolic{70, 220}, usual_diastolic{40, 140};  ///< mmHg

bool is_usual(const Usual& usual, double value) { return value >= usual.least && value <= usual.most; }

/// A field as it was typed and as it will be stored and shown again.
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
