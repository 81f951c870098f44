#include "wizard/summary_page.h"

#include "database/patient.h"
#include "support/error.h"
#include "support/harbinox.h"
#include "wizard/drug_page.h"
#include "wizard/new_database_path.h"
#include "wizard/option_groups.h"
#include "wizard/page_grid.h"
#include "wizard/page_rows.h"
#include "wizard/pages.h"
#include "wizard/patient_page.h"

namespace wizard {

namespace {

constexpr long nothing_chosen = 4850;

std::string or_nothing(const Context& context, std::string text) {
  if (text.empty()) text = context.config.text(nothing_chosen);
  return text;
}

void append(std::string& list, std::string_view item) {
  if (item.empty()) return;
  if (!list.empty()) list += ", ";
  list += item;
}

std::string option_caption(const Context& context, std::string_view options) {
  const int chosen = chosen_option(context.form, options);
  std::string caption = chosen < 0 ? std::string() : context.form.at(options, chosen).caption();
  support::replace(caption, "&", "");
  return or_nothing(context, caption);
}

std::string list_text(const Context& context, std::string_view list) {
  return or_nothing(context, context.form.at(list).text());
}

std::string target_line(const Context& context, long number, int first) {
  const auto text = [&](int field) -> const std::string& { return context.form.at("txtvorgabe", field).text(); };
  return context.config.text(number, {text(first), text(first + 1), text(first + 2), text(first + 3),
                                      context.form.at("lblUnit", 0).caption()});
}

std::string patient_lines(const Context& context, const Pages& pages) {
  database::PatientRecord patient;
  gather_patient(context.form, patient);
  std::string lines = context.config.text(4831, {patient.firstname + " " + patient.name});
  lines += "\r\n" + context.config.text(4832, {list_text(context, "cbDiabetesTyp")});
  lines += "\r\n" + context.config.text(4833, {list_text(context, "cbTherapie")});
  const std::string& known = context.config.CurrentDB;
  const std::string file = known.empty() ? new_database_path(context, patient) : known;
  return lines + "\r\n" + context.config.text(pages.HasCurrentDB ? 4848 : 4847, {file});
}

std::string folder_line(const Context& context, const Pages&) {
  return context.config.text(4849, {context.config.PatientData});
}

std::string insulin_line(const Context& context, const Pages& pages) {
  std::string names;
  for (const auto& insulin : pages.insulin.insulins()) append(names, database::insulin_name(insulin.value_or("")));
  return context.config.text(4839, {or_nothing(context, names)});
}

std::string drug_line(const Context& context, const Pages&) {
  std::string names;
  for (const std::string& drug : gather_drugs(context.form)) append(names, drug);
  return context.config.text(4840, {or_nothing(context, names)});
}

std::string chart_line(const Context& context, const Pages& pages) {
  std::string titles;
  for (const form::Control* option : pages.charts.chosen()) append(titles, option->tooltip());
  return context.config.text(4841, {or_nothing(context, titles)});
}

template <long number>
std::string option_line(const Context& context, std::string_view options) {
  return context.config.text(number, {option_caption(context, options)});
}

std::string unit_line(const Context& context, const Pages&) { return option_line<4834>(context, "optBGUnit"); }
std::string entry_line(const Context& context, const Pages&) { return option_line<4842>(context, "optDataEntry"); }
std::string style_line(const Context& context, const Pages&) { return option_line<4843>(context, "optDisplayStyle"); }
std::string sidebar_line(const Context& context, const Pages&) { return option_line<4845>(context, "optShowSideBar"); }
std::string start_line(const Context& context, const Pages&) { return option_line<4846>(context, "optShowStart"); }
std::string glucose_line(const Context& context, const Pages&) { return target_line(context, 4835, 0); }
std::string pressure_line(const Context& context, const Pages&) { return target_line(context, 4838, 4); }
std::string scheme_line(const Context& context, const Pages&) {
  return context.config.text(4844, {list_text(context, "cbSchema")});
}

struct SummaryRow {
  std::string_view page;
  std::string (*lines)(const Context&, const Pages&);
};

constexpr SummaryRow rows[] = {
    {"netpath", folder_line},       {"Maßeinheit", unit_line},  {"PatDat", patient_lines},
    {"Insulin", insulin_line},      {"Medikamente", drug_line}, {"Therapie_BZ", glucose_line},
    {"Therapie_BP", pressure_line}, {"Pics", chart_line},       {"Eingabe", entry_line},
    {"Darstellung", style_line},    {"Schema", scheme_line},    {"sidebar", sidebar_line},
    {"start", start_line},
};

}  // namespace

void show_summary(Context& context, const Pages& pages) {
  support::Procedure procedure{"wizard!Summary"};
  std::string summary;
  for (const SummaryRow& row : rows) {
    if (!pages.steps.offers(row.page)) continue;
    procedure.step([&] { summary += (summary.empty() ? "" : "\r\n") + row.lines(context, pages); });
  }
  context.form.at("lblSummary").set_text(summary);
}

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow summary_controls[] = {
    grid::heading("Fertig", "L4718", {120, 120, 5820, 480}),
    {"imgOpen", -1, Image, "", {6000, 120, 480, 480}, "Illustration", "L4808"},
    {"imgNew", -1, Image, "", {6000, 120, 480, 480}, "Illustration", "L4808", false},
    grid::purpose("Diese Einstellungen werden jetzt gespeichert:", "L4738"),
    {"lblSummary", -1, TextBox, "", {120, 1440, 6360, 3900}},
};
// clang-format on

constexpr PagePicture summary_pictures[] = {{"imgOpen", 0, "open"}, {"imgNew", 0, "new"}};

void preset_summary(Context& context, Pages&, const Stored&) {
  if (context.config.ProEdition) context.form.at("imgOpen").set_picture(context.form.at("imgNew").picture());
}
void enter_summary(Context& context, Pages& pages) { show_summary(context, pages); }

}  // namespace

constinit const Page summary_page{.tag = "Fertig",
                                  .shown_in = Edition::Both,
                                  .controls = summary_controls,
                                  .pictures = summary_pictures,
                                  .preset = preset_summary,
                                  .enter = enter_summary};

}  // namespace wizard
