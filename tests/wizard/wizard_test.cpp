#include "tests/wizard/wizard_test.h"

#include <filesystem>
#include <fstream>
#include <random>

#include "database/open_database.h"
#include "support/encoding.h"
#include "support/hive_registry.h"
#include "support/host.h"

namespace wizard::testing {
namespace {

constexpr std::uint64_t file_limit = 16 << 20;

std::filesystem::path host(const std::string& windows_path) {
  const std::string text = support::host_file_system().host_path(windows_path);
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string new_folder(const std::filesystem::path& parent) {
  const auto folder = parent / ("firststeps_wizard_" + std::to_string(std::random_device{}()));
  std::filesystem::create_directories(folder);
  return support::host_file_system().windows_path(folder.string());
}

}  // namespace

std::string Texts::loadres(long number) const {
  const auto found = given.find(number);
  return found != given.end() ? found->second : "T" + std::to_string(number);
}

int ScriptedUser::message_box(std::string_view text, std::uint32_t style, std::string_view title) {
  log.push_back("message " + std::string(text) + " " + std::to_string(style) + " " + std::string(title));
  if (answers.empty()) return 1;
  const int answer = answers.front();
  answers.pop_front();
  return answer;
}

std::optional<std::string> ScriptedUser::choose_folder(std::string_view title) {
  log.push_back("folder " + std::string(title));
  return chosen_folder;
}

bool ScriptedUser::open_file(std::string_view path) {
  log.push_back("open " + std::string(path));
  return true;
}

std::vector<std::string> ScriptedUser::recycle(std::string_view folder, std::string_view pattern) {
  log.push_back("recycle " + std::string(folder) + " " + std::string(pattern));
  if (!recycles) return {};
  auto names = support::host_file_system().files(folder, pattern);
  for (const std::string& name : names) support::host_file_system().remove(std::string(folder) + name);
  return names;
}

/// A character is 100 twips wide.
std::int32_t ScriptedUser::text_width(std::string_view text, std::string_view) {
  return static_cast<std::int32_t>(support::character_count(text)) * 100;
}

WizardTest::WizardTest(const std::filesystem::path& parent)
    : folder_(new_folder(parent)), registry_(support::open_hive(host(path("hive.reg")).string())) {
  write("vantrix.ini", "[setup]\nRegPath=vantrix\n");
}

WizardTest::~WizardTest() {
  wizard_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(host(folder_), ignored);
}

void WizardTest::write(std::string_view name, std::string_view content) const {
  const auto file = host(folder_) / host(std::string(name)).relative_path();
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << support::cp1252_from_utf8(content);
}

std::string WizardTest::read(std::string_view name) const {
  return support::utf8_from_cp1252(support::host_file_system().read(path(name), file_limit).value_or("(missing)"));
}

std::map<std::string, std::string> WizardTest::everything() const {
  std::map<std::string, std::string> found;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(host(folder_))) {
    if (entry.is_regular_file()) {
      std::ostringstream content;
      content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
      found[entry.path().string()] = content.str();
    } else {
      found[entry.path().string()] = "(folder)";
    }
  }
  return found;
}

void WizardTest::set_value(support::RootKey root, std::string_view key, std::string_view name, std::string_view value) {
  ASSERT_TRUE(support::WriteRegString(*registry_, root, key, name, value));
}

std::optional<std::string> WizardTest::value(std::string_view key, std::string_view name) const {
  const auto found = registry_->read(support::RootKey::CurrentUser, key, name);
  if (!found) return std::nullopt;
  return found->text.substr(0, found->text.find('\0'));
}

frmAssistantFirstSteps& WizardTest::start(std::string_view command_line) {
  EXPECT_TRUE(try_start(command_line));
  return *wizard_;
}

bool WizardTest::try_start(std::string_view command_line) {
  wizard_.reset();
  Ports ports;
  ports.registry = registry_.get();
  ports.ini = &support::host_ini_files();
  ports.files = &support::host_file_system();
  ports.user = &user;
  ports.create_language = [this](std::string_view) { return texts; };
  ports.open_engine = engine::open_engine;
  ports.now = [this] { return now; };
  ports.own_folder = folder_;
  adapt(ports);
  wizard_ = std::make_unique<frmAssistantFirstSteps>(std::move(ports));
  return wizard_->load(command_line);
}

void WizardTest::go_to(std::string_view page) {
  for (int steps = 0; steps < 30; ++steps) {
    if (support::equal_ignoring_case(wizard_->StepName(), page)) return;
    next();
  }
  FAIL() << "no page " << page;
}

void WizardTest::choose(std::string_view options, int option) {
  control(options, option).set_value(1);
  wizard_->click(options, option);
}

void WizardTest::tick(int chart, int value) {
  control("optThumb", chart).set_value(value);
  wizard_->click("optThumb", chart);
}

void WizardTest::select(std::string_view list, std::int32_t item_data) {
  const auto& items = control(list).items();
  for (std::size_t n = 0; n < items.size(); ++n)
    if (items[n].item_data == item_data) control(list).set_list_index(static_cast<int>(n));
  ASSERT_EQ(control(list).selected_item_data(), item_data);
  wizard_->click(list);
}

void WizardTest::type(std::string_view name, std::string_view text, int index) {
  control(name, index).set_text(text);
  wizard_->change(name, index);
}

void WizardTest::enter_name(std::string_view first_name, std::string_view name) {
  type("txtFirstName", first_name);
  type("txtName", name);
}

void WizardTest::finish() {
  for (int steps = 0; steps < 30 && wizard_->state() == frmAssistantFirstSteps::State::Running; ++steps) next();
  ASSERT_EQ(wizard_->state(), frmAssistantFirstSteps::State::Finished);
}

std::string WizardTest::known_database(std::string_view name) {
  // The database is made once and copied: the copies share their salt, so that their key is derived only once.
  static const std::string content = make_known_database();
  const auto file = host(path(name));
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
  return path(name);
}

/// Runs the wizard in another installation below this one.
std::string WizardTest::make_known_database() {
  const std::string folder = std::exchange(folder_, path("made"));
  std::filesystem::create_directories(host(folder_));
  auto registry = std::exchange(registry_, support::open_hive((host(folder_) / "hive.reg").string()));
  const engine::Date today = std::exchange(now, engine::date_from(2020, 1, 2));
  start();
  enter_name();
  select("cbDiabetesTyp", 1);
  select("cbTherapie", 2);
  type("cbInsulin", "Novorapid", 0);
  type("txtMedik", "Metformin", 0);
  finish();
  std::string content = support::host_file_system().read(wizard_->config().CurrentDB, file_limit).value_or("");
  wizard_.reset();
  user.log.clear();
  now = today;
  registry_ = std::move(registry);
  std::filesystem::remove_all(host(folder_));
  folder_ = folder;
  return content;
}

std::unique_ptr<engine::Database> WizardTest::open(const std::string& database,
                                                   std::unique_ptr<engine::Engine>& engine) const {
  database::Environment environment;
  environment.password = database::default_password;
  std::unique_ptr<engine::Database> opened;
  database::OpenPatientDatabase(environment, database, false, false, engine, opened);
  if (!opened) throw support::RuntimeError(3024, "cannot open " + database);
  return opened;
}

std::vector<std::string> WizardTest::rows(const std::string& database, std::string_view query) const {
  std::unique_ptr<engine::Engine> engine;
  const auto opened = open(database, engine);
  const auto set = opened->open_recordset(query);
  std::vector<std::string> found;
  for (; !set->eof(); set->move_next()) {
    std::string row;
    for (std::int32_t n = 0; n < set->field_count(); ++n) {
      const engine::Value cell = set->value(n);
      const auto* date = std::get_if<engine::Date>(&cell);
      row += (n ? "|" : "") + (engine::is_null(cell) ? "Null" : date ? engine::iso_text(*date) : engine::to_text(cell));
    }
    found.push_back(row);
  }
  return found;
}

void WizardTest::execute(const std::string& database, std::string_view statement) const {
  std::unique_ptr<engine::Engine> engine;
  open(database, engine)->execute(statement);
}

std::vector<std::string> WizardTest::lines(const FinishReport& report) {
  std::vector<std::string> found;
  for (const auto& entry : report.entries)
    found.push_back(entry.name + (entry.value.empty() ? "" : "=" + entry.value) +
                    (entry.written ? "" : " (" + entry.problem + ")"));
  return found;
}

}  // namespace wizard::testing
