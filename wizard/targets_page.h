// Pages "Therapie_BZ" and "Therapie_BP": target values of blood glucose (`txtvorgabe` 0 to 3) and blood pressure (4 to
// 7), and the findings about them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "database/settings.h"
#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finding.h"
#include "wizard/glucose_unit.h"

namespace wizard {

struct Pages;

/// By index of `txtvorgabe`. The items 500 to 507 of a therapy plan have the same order.
inline constexpr std::array<std::int16_t database::SettingsRecord::*, 8> target_members = {
    &database::SettingsRecord::BGTargetMin,    &database::SettingsRecord::BGTargetMax,
    &database::SettingsRecord::BGHypo,         &database::SettingsRecord::BGHyper,
    &database::SettingsRecord::BPTargetSysMin, &database::SettingsRecord::BPTargetSysMax,
    &database::SettingsRecord::BPTargetDiaMin, &database::SettingsRecord::BPTargetDiaMax,
};

/// The name of a field on its page.
std::string target_name(const form::Form& form, std::size_t field);

class TargetsPage {
 public:
  explicit TargetsPage(Context& context) : context_(context) {}

  /// Shows the targets; the glucose values in this unit, which becomes the current one.
  void show(const database::SettingsRecord& settings, GlucoseUnit unit);
  /// Labels the fields and, if the unit is a new one, converts their texts. A text that is no number stays.
  void change_unit(GlucoseUnit unit);

  /// False if the glucose targets are no numbers or contradict each other. The user has then been told why, and the
  /// wrong field has the focus. The targets are compared as they are shown: two equal texts are equal, whatever is
  /// stored behind them.
  bool check_glucose();

  /// True if the field still shows what show() put there.
  bool is_untouched(std::size_t field) const;

  /// Puts the fields into the record (mg/dl, mmHg). A field that is no number leaves the record's value. A field that
  /// still shows what show() put there gives exactly the value that show() was given.
  void gather(database::SettingsRecord& settings) const;
  /// Puts the values that show() was given into the record.
  void gather_presets(database::SettingsRecord& settings) const;

 private:
  static constexpr std::size_t glucose_fields = 4, all_fields = target_members.size();

  struct Shown {
    std::string text;
    std::int16_t value = 0;  ///< mg/dl or mmHg
  };

  form::Control& box(std::size_t field) const;
  std::optional<std::int16_t> value(std::size_t field) const;
  bool refuse(std::size_t field, const std::string& message);
  std::string number_message(std::size_t field) const;

  Context& context_;
  GlucoseUnit unit_ = GlucoseUnit::MgDl;
  GlucoseUnit shown_unit_ = GlucoseUnit::MgDl;
  std::array<Shown, all_fields> shown_;
};

void find_in_glucose_targets(const Context& context, const Pages& pages, const Choices& choices, Findings& findings);
void find_in_pressure_targets(const Context& context, const Pages& pages, const Choices& choices, Findings& findings);

}  // namespace wizard
