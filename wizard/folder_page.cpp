// Page "netpath": the folder of the patient databases, on this computer or shared.
#include "support/windows_path.h"
#include "wizard/context.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/shared_index.h"
#include "wizard/summary_page.h"

namespace wizard {
namespace {

constexpr int new_database = 0;
constexpr long folder_dialog_title[] = {4801, 4802};
constexpr long index_exists_already = 2400;
constexpr long local_folder = 4685, shared_folder = 4686;

/// While this object lives, the window is not above all others, so that a dialog can be seen.
class NotTopmost {
 public:
  explicit NotTopmost(UserPort& user) : user_(user) { user_.set_topmost(false); }
  ~NotTopmost() { user_.set_topmost(true); }
  NotTopmost(const NotTopmost&) = delete;
  NotTopmost& operator=(const NotTopmost&) = delete;

 private:
  UserPort& user_;
};

/// Shows the folder and says whether it lies on a network drive.
void show_folder(Context& context) {
  context.form.at("lblFolder").set_caption(context.config.PatientData);
  context.show_text(context.form.at("lblLocation"),
                    context.ports.user->is_network_path(context.config.PatientData) ? shared_folder : local_folder);
}

/// `cmdPath` Click. Button 0 asks for the folder of a new shared database, which must hold no index yet; button 1 asks
/// for the folder of an existing one. A choice that is cancelled or refused changes nothing.
void choose_folder(Context& context, int button) {
  if (button < 0 || button >= static_cast<int>(std::size(folder_dialog_title))) return;
  const NotTopmost not_topmost{*context.ports.user};
  const auto folder = context.ports.user->choose_folder(context.config.text(folder_dialog_title[button]));
  if (!folder || folder->empty()) return;
  if (button == new_database && context.ports.files->file_size(index_in(*folder))) {
    context.message(index_exists_already, message_style::critical_foreground);
    return;
  }
  context.config.PatientData = support::join_path(*folder, "");
  context.config.IndexDB = index_in(*folder);
  bring_index_up_to_date(context);
  show_folder(context);
}

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow folder_controls[] = {
    grid::heading("Ordner der Patientendaten", "L4702"),
    grid::purpose("Legen Sie fest, wo die Patientendaten liegen.", "L4722"),
    {"lblFolderTitle", -1, Label, "", grid::label(0), "Ordner:", "L4797"},
    {"lblFolder", -1, Label, "", {1920, grid::line(0) + 45, 4560, 720}},
    {"lblLocation", -1, Label, "", {1920, 2280, 4560, 720}},
    {"cmdPath", 0, Button, "", {120, 3180, 6360, 600}, "&Neue gemeinsame Datenbank anlegen …", "L4799"},
    {"cmdPath", 1, Button, "", {120, 3900, 6360, 600}, "&Vorhandene gemeinsame Datenbank verwenden …", "L4800"},
    grid::why(),
};
// clang-format on

void preset_folder(Context& context, Pages& pages, const Stored&) {
  pages.folder_at_start = context.config.PatientData;
  show_folder(context);
}
void click_path(Context& context, Pages&, int button) { choose_folder(context, button); }

/// In the professional edition, no registry value holds the chosen folder.
std::vector<std::string> sum_up_folder(const Context& context, const Choices& choices) {
  return {context.config.text(context.config.ProEdition ? 4854 : 4849, {choices.folder})};
}

void find_in_folder(const Context& context, const Pages& pages, const Choices& choices, Findings& findings) {
  constexpr long folder_not_stored = 4892;
  if (context.config.ProEdition && choices.folder != pages.folder_at_start)
    findings.push_back(
        {.control = "cmdPath(1)", .text = folder_not_stored, .values = {choices.folder, pages.folder_at_start}});
}

constexpr PageEvent folder_clicks[] = {{"cmdPath", click_path}};

}  // namespace

constinit const Page folder_page{.tag = "netpath",
                                 .shown_in = Edition::Professional,
                                 .controls = folder_controls,
                                 .why = 4930,
                                 .clicks = folder_clicks,
                                 .preset = preset_folder,
                                 .summary = sum_up_folder,
                                 .findings = find_in_folder};

}  // namespace wizard
