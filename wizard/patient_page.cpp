#include "wizard/patient_page.h"

#include "support/common_code.h"
#include "wizard/form/match_list.h"
#include "wizard/option_groups.h"

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

}  // namespace

void fill_patient_lists(Context& context) {
  for (const NumberedList& list : lists) {
    std::vector<form::ListItem> items;
    for (std::int32_t n = 1; n <= list.entries; ++n) items.push_back({context.config.text(list.first_text + n - 1), n});
    context.form.at(list.control).set_items(std::move(items));
  }
}

void show_patient(Context& context, const database::PatientRecord& patient) {
  for (const TextField& field : text_fields) context.form.at(field.control).set_text(patient.*field.member);
  if (form::Control* gender = context.form.find("optGender", patient.gender)) gender->set_value(1);
  for (const NumberedList& list : lists)
    form::MatchList(context.form.at(list.control), std::to_string(patient.*list.member));
}

void gather_patient(const form::Form& form, database::PatientRecord& patient) {
  for (const TextField& field : text_fields) patient.*field.member = support::trim(form.at(field.control).text());
  if (const int gender = chosen_option(form, "optGender"); gender >= 0)
    patient.gender = static_cast<std::uint8_t>(gender);
  for (const NumberedList& list : lists)
    if (const form::Control& box = form.at(list.control); box.list_index() >= 0)
      patient.*list.member = static_cast<std::int16_t>(box.selected_item_data());
}

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

}  // namespace wizard
