#include "wizard/finding.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "database/open_database.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/windows_path.h"
#include "wizard/finish_report.h"
#include "wizard/home_page.h"
#include "wizard/new_database_path.h"
#include "wizard/page_list.h"

namespace wizard {
namespace {

constexpr long warning_mark = 4855, note_mark = 4856, field_full = 4861;

/// Windows counts typed characters in units of UTF-16.
bool is_full(const form::Control& field) {
  if (!field.editable() || field.maximum() <= 0) return false;
  return support::utf16_from_utf8(field.text()).size() >= static_cast<std::size_t>(field.maximum());
}

/// The last label before the field in the form's order.
std::string label_of(const form::Form& form, const form::Control& field) {
  std::string label;
  for (const auto& control : form.controls()) {
    if (control.get() == &field) break;
    if (control->kind() == form::Kind::Label) label = control->caption();
  }
  return form::plain_caption(label);
}

/// A full field is a finding: characters beyond its limit were not accepted, and only the user knows whether there were
/// any.
void find_full_fields(const Context& context, const Page& page, Findings& findings) {
  const form::Control& container = context.form.at("contstep", page_index(page));
  for (const TextLimit& limit : page.limits) {
    std::vector<const form::Control*> fields = context.form.array(limit.control);
    if (const form::Control* single = context.form.find(limit.control)) fields.push_back(single);
    for (const form::Control* field : fields) {
      if (field->parent() != &container || !is_full(*field)) continue;
      findings.push_back({.severity = Severity::Warning,
                          .control = field->path(),
                          .text = field_full,
                          .values = {label_of(context.form, *field), std::to_string(limit.characters)}});
    }
  }
}

}  // namespace

std::string finding_text(const InstallationConfig& config, const Finding& finding) {
  return config.text(finding.text, finding.values);
}

std::string marked_text(const InstallationConfig& config, const Finding& finding) {
  const long mark = finding.severity == Severity::Warning ? warning_mark : note_mark;
  return config.text(mark, {finding_text(config, finding)});
}

Findings page_findings(const Context& context, const Pages& pages, const Choices& choices, const Page& page) {
  Findings findings;
  support::Procedure procedure{"wizard!Findings"};
  // The professional edition does not store these pages; the last page says so.
  if (page.patients_own && context.config.ProEdition) return findings;
  if (page.findings) procedure.step([&] { page.findings(context, pages, choices, findings); });
  procedure.step([&] { find_full_fields(context, page, findings); });
  for (Finding& finding : findings) finding.page = page.tag;
  return findings;
}

Findings all_findings(const Context& context, const Pages& pages, const Choices& choices) {
  Findings findings = surrounding_findings(context, choices);
  for (const Page* page : all_pages())
    std::ranges::move(page_findings(context, pages, choices, *page), std::back_inserter(findings));
  return findings;
}

namespace {

constexpr long folder_cannot_be_made = 4893, folder_is_protected = 4894, little_room = 4895, name_is_taken = 4896,
               no_name_is_free = 4897, folder_does_not_fit = 4898, value_does_not_fit = 4899, database_unread = 4900,
               plan_unread = 4901, file_is_protected = 4902, registry_is_protected = 4903, no_home_page = 4904,
               index_unread = 4905, index_not_created = 4906, patients_not_upgraded = 4907, profile_does_not_fit = 4908,
               has_a_twin = 4912;

/// The room that a new database and the engine's own files need while it is made.
constexpr std::uint64_t megabyte = 1 << 20, room_for_database = 4 * megabyte;

/// One search for findings: what was found so far, and short ways to add more.
class Look {
 public:
  Look(const Context& context, const Choices& choices) : context_(context), choices_(choices) {}

  Findings run();

 private:
  const support::FileSystem& files() const { return *context_.ports.files; }
  void warn(long text, std::vector<std::string> values) {
    findings_.push_back({.severity = Severity::Warning, .text = text, .values = std::move(values)});
  }
  void look_at_new_database();
  void look_at_folder(const std::string& folder);
  void look_for_room(const std::string& folder);
  void look_at_known_database();
  void look_at_registry();
  void look_at_home_page();
  void look_at_index();
  void look_for_twins();

  const Context& context_;
  const Choices& choices_;
  Findings findings_;
};

std::string folder_of(const std::string& path) {
  return support::ExtractFromPath(path, static_cast<int>(support::PathPart::Folder));
}

void Look::look_at_new_database() {
  if (!choices_.new_database) return;
  if (!choices_.refused_database.empty()) return warn(folder_does_not_fit, {choices_.folder});
  const std::string& path = choices_.database;
  if (path.empty()) return warn(no_name_is_free, {choices_.folder});
  // A numbered name means a file in the program's current folder, whatever folder was chosen.
  const std::string wanted = wanted_database_path(context_, choices_.patient);
  const std::string folder = path == wanted ? choices_.folder : files().windows_path(files().host_path("."));
  if (path != wanted)
    findings_.push_back(
        {.severity = Severity::Warning, .page = {}, .text = name_is_taken, .values = {wanted, path, folder}});
  look_at_folder(folder);
}

void Look::look_at_folder(const std::string& folder) {
  if (!files().can_create_in(folder))
    return warn(files().folder_exists(folder) ? folder_is_protected : folder_cannot_be_made, {folder});
  look_for_room(folder);
}

void Look::look_for_room(const std::string& folder) {
  const auto room = files().free_space(folder);
  if (!room || *room >= room_for_database) return;
  warn(little_room, {folder, std::to_string(room_for_database / megabyte), std::to_string(*room / megabyte)});
}

/// The professional edition writes to no patient's database, so it needs no look at one.
void Look::look_at_known_database() {
  const std::string& path = context_.config.CurrentDB;
  if (choices_.new_database || path.empty() || context_.config.ProEdition) return;
  const StoredNow& stored = choices_.stored;
  const auto why = [&] { return stored.failure ? error_reason(context_.config, *stored.failure) : std::string(); };
  if (!stored.usable) return warn(database_unread, {path, why()});
  if (stored.plan_unread) warn(plan_unread, {path, why()});
  if (!files().can_write(path)) return warn(file_is_protected, {path});
  look_for_room(folder_of(path));
}

void Look::look_at_registry() {
  const InstallationConfig& config = context_.config;
  if (!support::fits_cp1252(config.user_key())) warn(profile_does_not_fit, {config.User});
  for (const std::string& key : {config.RegKey, config.user_key()}) {
    if (context_.ports.registry->can_write(support::RootKey::CurrentUser, key)) continue;
    warn(registry_is_protected, {"HKEY_CURRENT_USER\\" + config.RegKey});
    break;
  }
  if (!config.ProEdition && !support::fits_cp1252(choices_.folder) && choices_.refused_database.empty())
    warn(value_does_not_fit, {"PATIENTDATA", choices_.folder});
  if (!support::fits_cp1252(choices_.database)) warn(value_does_not_fit, {"DataBaseName", choices_.database});
}

void Look::look_at_home_page() {
  if (choices_.charts.empty()) return;
  const std::string file = context_.config.Path + "home.ini";
  if (home_page_section(context_, file).empty()) {
    if (std::ranges::any_of(choices_.charts, &ChartChoice::chosen)) warn(no_home_page, {file});
    return;
  }
  if (!files().can_write(file)) warn(file_is_protected, {file});
}

void Look::look_at_index() {
  const InstallationConfig& config = context_.config;
  for (const CreatedIndex& index : context_.created_indexes)
    if (index.failure) warn(index_not_created, {index.path, error_reason(config, *index.failure)});
  if (context_.patients_failure)
    warn(patients_not_upgraded, {config.IndexDB, error_reason(config, *context_.patients_failure)});
  if (!config.ProEdition || !support::file_test(files(), config.IndexDB)) return;
  support::Procedure procedure{"wizard!Surroundings"};
  procedure.step([&] { database::open_patient_database(context_.environment(), config.IndexDB, true); });
  if (procedure.pending()) warn(index_unread, {config.IndexDB, error_reason(config, procedure.error())});
}

/// Files that an older program wrote into its copy of a folder are not in the folder itself, and the other way round.
void Look::look_for_twins() {
  std::set<std::string> folders{context_.config.Path};
  if (!choices_.database.empty()) folders.insert(folder_of(choices_.database));
  for (const std::string& folder : folders) {
    const std::string twin = support::virtual_store_twin(files(), context_.ports.local_data, folder);
    if (!twin.empty()) warn(has_a_twin, {folder, twin});
  }
}

Findings Look::run() {
  support::Procedure procedure{"wizard!Surroundings"};
  constexpr void (Look::*looks[])() = {&Look::look_at_new_database, &Look::look_at_known_database,
                                       &Look::look_at_index,        &Look::look_at_registry,
                                       &Look::look_at_home_page,    &Look::look_for_twins};
  for (const auto look : looks) procedure.step([&] { (this->*look)(); });
  return std::move(findings_);
}

}  // namespace

Findings surrounding_findings(const Context& context, const Choices& choices) { return Look(context, choices).run(); }

}  // namespace wizard
