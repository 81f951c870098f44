// Page "PatDat": the patient's name and address, the type of diabetes and the kind of therapy.
#include <algorithm>

#include "database/patient.h"
#include "support/text.h"
#include "wizard/context.h"
#include "wizard/form/form.h"
#include "wizard/new_database_path.h"
#include "wizard/option_groups.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/presets.h"
#include "wizard/summary_page.h"

namespace wizard {
namespace {

struct TextField {
  std::string_view control;
  std::string database::PatientRecord::*member;
};

constexpr TextField text_fields[] = {
    {"txtName", &database::PatientRecord::name},     {"txtFirstName", &database::PatientRecord::firstname},
    {"txtStreet", &database::PatientRecord::street}, {"txtZIP", &database::PatientRecord::zip},
    {"txtCity", &database::PatientRecord::city},
};

struct NumberedList {
  std::string_view control;
  long first_text;  ///< the text of entry n is this number + n - 1
  std::int32_t entries;
  std::int16_t database::PatientRecord::*member;
};

/// Diabetes types: type 1, type 2, gestational, other. Therapies: conventional, intensified, pump, insulin and tablets,
/// without insulin.
constexpr NumberedList lists[] = {
    {"cbDiabetesTyp", 4811, 4, &database::PatientRecord::typ},
    {"cbTherapie", 4821, 5, &database::PatientRecord::therapy},
};

/// Fills the lists of diabetes types and therapies. The item data are the numbers that the patient record holds.
void fill_patient_lists(Context& context) {
  for (const NumberedList& list : lists) {
    std::vector<form::ListItem> items;
    for (std::int32_t n = 1; n <= list.entries; ++n) items.push_back({context.config.text(list.first_text + n - 1), n});
    context.form.at(list.control).set_items(std::move(items));
  }
}

/// The lists must be filled before. A number that a list does not have selects nothing in it; an unknown gender chooses
/// no option.
void show_patient(Context& context, const database::PatientRecord& patient) {
  for (const TextField& field : text_fields) context.form.at(field.control).set_text(patient.*field.member);
  if (form::Control* gender = context.form.find("optGender", patient.gender)) gender->set_value(1);
  for (const NumberedList& list : lists)
    form::MatchList(context.form.at(list.control), std::to_string(patient.*list.member));
}

/// Puts the page's fields into the record. A list without a selection leaves its number as it was, and so do options of
/// which none is chosen.
void gather_patient(const form::Form& form, database::PatientRecord& patient) {
  for (const TextField& field : text_fields) patient.*field.member = typed_text(form.at(field.control));
  if (const int gender = chosen_option(form, "optGender"); gender >= 0)
    patient.gender = static_cast<std::uint8_t>(gender);
  for (const NumberedList& list : lists)
    if (const form::Control& box = form.at(list.control); box.list_index() >= 0)
      patient.*list.member = static_cast<std::int16_t>(box.selected_item_data());
}

/// False if first name or name is blank. The user has then been told, and the field has the focus.
bool check_patient(Context& context) {
  struct Required {
    std::string_view control;
    long message;
  };
  for (const Required& field : {Required{"txtFirstName", 607}, Required{"txtName", 606}}) {
    form::Control& control = context.form.at(field.control);
    if (!support::trim(control.text()).empty()) continue;
    context.message(field.message, message_style::critical_system_modal);
    context.form.request_focus(control);
    return false;
  }
  return true;
}

struct TherapyKind {
  std::int32_t number;
  unsigned hidden_slots;  ///< bit n stands for insulin slot n
  bool insulin_page;
};

constexpr unsigned pump_slot = 0b10000;

constexpr TherapyKind kinds[] = {
    {1, pump_slot, true},   // conventional insulin therapy
    {2, pump_slot, true},   // intensified insulin therapy
    {3, ~pump_slot, true},  // pump
    {4, pump_slot, true},   // insulin and tablets
    {5, 0, false},          // without insulin
};
constexpr TherapyKind any_other{0, 0, true};

/// Shows the insulin slots of the therapy that is selected in `cbTherapie`, and leaves out the page "Insulin" if the
/// therapy has none. A page that the list leaves out already stays left out.
void show_therapy_kind(Context& context, StepList& steps) {
  const auto match = std::ranges::find(kinds, context.form.at("cbTherapie").selected_item_data(), &TherapyKind::number);
  const TherapyKind& kind = match == std::end(kinds) ? any_other : *match;
  if (!kind.insulin_page) steps.offer("Insulin", false);
  for (std::string_view array : {"lblInsulin", "cbInsulin"})
    for (form::Control* control : context.form.array(array))
      control->set_visible((kind.hidden_slots >> control->index() & 1U) == 0);
}

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow patient_controls[] = {
    grid::heading("Ihre Daten", "L4704"),
    grid::purpose("Vorname und Nachname werden gebraucht.", "L4724"),
    {"lblFirstName", -1, Label, "", grid::label(0), "&Vorname:", "L4740"},
    {"txtFirstName", -1, TextBox, "", grid::field(0), "", "", true, true},
    {"lblName", -1, Label, "", grid::label(1), "&Nachname:", "L4741"},
    {"txtName", -1, TextBox, "", grid::field(1), "", "", true, true},
    {"lblStreet", -1, Label, "", grid::label(2), "&Straße:", "L4742"},
    {"txtStreet", -1, TextBox, "", grid::field(2), "", "", true, true},
    {"lblZIP", -1, Label, "", grid::label(3), "P&LZ:", "L4743"},
    {"txtZIP", -1, TextBox, "", grid::field(3, 1920, 960), "", "", true, true},
    {"lblCity", -1, Label, "", {3060, grid::line(3) + 45, 780, 480}, "&Ort:", "L4744"},
    {"txtCity", -1, TextBox, "", grid::field(3, 3900, 2580), "", "", true, true},
    {"lblGender", -1, Label, "", grid::label(4), "Geschlecht:", "L4745"},
    {"optGender", 0, OptionButton, "", grid::field(4, 1920, 1860), "&Weiblich", "L4746"},
    {"optGender", 1, OptionButton, "", grid::field(4, 3900, 2580), "&Männlich", "L4747"},
    {"lblDiabetesTyp", -1, Label, "", grid::label(5), "&Diabetestyp:", "L4748"},
    {"cbDiabetesTyp", -1, ComboBox, "", grid::field(5)},
    {"lblTherapie", -1, Label, "", {120, grid::line(6) + 45, 1740, 300}, "T&herapie:", "L4749"},
    {"cbTherapie", -1, ComboBox, "", grid::field(6)},
    grid::why(),
};
// clang-format on

/// The sizes of the columns of `patdat`.
constexpr TextLimit patient_limits[] = {
    {"txtFirstName", 50}, {"txtName", 50}, {"txtStreet", 50}, {"txtZIP", 50}, {"txtCity", 50}};

void preset_patient(Context& context, Pages& pages, const Stored& stored) {
  fill_patient_lists(context);
  show_patient(context, stored.patient);
  show_therapy_kind(context, pages.steps);
}

bool leave_patient(Context& context, Pages&) { return check_patient(context); }
void gather_patient_page(const Context& context, const Pages&, Choices& choices) {
  gather_patient(context.form, choices.patient);
}

/// The list's text for a number; for a number that the list does not have, the text that says that nothing is given.
std::string entry_text(const Context& context, const NumberedList& list, std::int16_t number) {
  const bool known = number >= 1 && number <= list.entries;
  return context.config.text(known ? list.first_text + number - 1 : nothing_chosen);
}

std::string database_line(const Context& context, const Choices& choices) {
  if (!choices.new_database) return context.config.text(4848, {choices.database});
  return context.config.text(choices.database.empty() ? 4851 : 4847, {choices.database});
}

std::vector<std::string> sum_up_patient(const Context& context, const Choices& choices) {
  const database::PatientRecord& patient = choices.patient;
  const InstallationConfig& config = context.config;
  std::string city = support::trim(patient.zip + " " + patient.city), address = patient.street;
  if (!address.empty() && !city.empty()) address += ", ";
  address += city;
  const form::Control* gender = context.form.find("optGender", patient.gender);
  return {config.text(4831, {patient.firstname + " " + patient.name}),
          config.text(4852, {address.empty() ? config.text(nothing_chosen) : address}),
          config.text(4853, {gender ? form::plain_caption(gender->caption()) : config.text(nothing_chosen)}),
          config.text(4832, {entry_text(context, lists[0], patient.typ)}),
          config.text(4833, {entry_text(context, lists[1], patient.therapy)}),
          database_line(context, choices)};
}

/// Does what show_therapy_kind does, after the pages "Insulin" and "Medikamente" are offered again.
void choose_therapy(Context& context, Pages& pages, int) {
  pages.steps.offer("Insulin", true);
  pages.steps.offer("Medikamente", true);
  show_therapy_kind(context, pages.steps);
}

constexpr PageEvent patient_clicks[] = {{"cbTherapie", choose_therapy}};

/// The name in the record stays as it is. The file's name may differ, because registry and diary must be able to hold
/// it.
void find_other_file_name(const Choices& choices, Findings& findings) {
  const database::PatientRecord& patient = choices.patient;
  const std::string name = database_file_name(patient);
  if (!choices.new_database || name == patient.name + "_" + patient.firstname + ".das") return;
  constexpr long other_file_name = 4862;
  findings.push_back({.severity = Severity::Note, .control = "txtName", .text = other_file_name, .values = {name}});
}

void find_in_patient(const Context& context, const Pages&, const Choices& choices, Findings& findings) {
  constexpr long do_not_go_together = 4860;
  constexpr std::int16_t gestational = 3;
  constexpr std::uint8_t male = 1;
  if (choices.patient.typ == gestational && choices.patient.gender == male)
    findings.push_back({.control = "cbDiabetesTyp",
                        .text = do_not_go_together,
                        .values = {entry_text(context, lists[0], gestational),
                                   form::plain_caption(context.form.at("optGender", male).caption())}});
  find_other_file_name(choices, findings);
}

}  // namespace

constinit const Page patient_page{.tag = "PatDat",
                                  .step = "Patdat",
                                  .shown_in = Edition::Standard,
                                  .patients_own = true,
                                  .controls = patient_controls,
                                  .why = 4932,
                                  .limits = patient_limits,
                                  .clicks = patient_clicks,
                                  .preset = preset_patient,
                                  .leave = leave_patient,
                                  .gather = gather_patient_page,
                                  .summary = sum_up_patient,
                                  .findings = find_in_patient};

}  // namespace wizard
