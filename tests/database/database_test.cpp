#include "tests/database/database_test.h"

#include <filesystem>
#include <fstream>
#include <random>

#include "support/encoding.h"

namespace database::testing {
namespace {

std::filesystem::path host(const std::string& windows_path) {
  const std::string text = support::host_file_system().host_path(windows_path);
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string new_folder() {
  const auto name = "firststeps_database_" + std::to_string(std::random_device{}());
  const auto folder = std::filesystem::temp_directory_path() / name;
  std::filesystem::create_directories(folder);
  return support::host_file_system().windows_path(folder.string());
}

constexpr std::uint64_t file_limit = 16 << 20;

}  // namespace

std::string Texts::loadres(long number) const {
  const auto found = given.find(number);
  return found != given.end() ? found->second : "Text " + std::to_string(number);
}

std::string ZoneFile::value(std::string_view file, std::string_view section, std::string_view key,
                            std::string_view fallback, std::size_t size) const {
  EXPECT_EQ(file, "Z:\\setup.ini");
  EXPECT_EQ(section, "timezones");
  EXPECT_EQ(size, 4096U);
  const auto found = values.find(key);
  return found != values.end() ? found->second : std::string(fallback);
}

DatabaseTest::DatabaseTest() : folder(new_folder()) {
  environment.password = "geheim";
  environment.language = &texts;
  environment.ini = &zone_file;
  environment.settings_file = "Z:\\setup.ini";
  environment.now = [] { return engine::date_from(2024, 5, 17, 14, 30, 0); };
  environment.message_box = [this](std::string_view text, std::uint32_t style, std::string_view) {
    messages.push_back({std::string(text), style});
    return 1;
  };
}

DatabaseTest::~DatabaseTest() {
  std::error_code ignored;
  std::filesystem::remove_all(host(folder), ignored);
}

void DatabaseTest::write_file(const std::string& windows_path, std::string_view content) const {
  std::ofstream(host(windows_path), std::ios::binary) << content;
}

std::string DatabaseTest::read_file(const std::string& windows_path) const {
  return support::host_file_system().read(windows_path, file_limit).value_or("(missing)");
}

int DatabaseTest::creation_error(const std::string& windows_path, const PatientRecord& patient) const {
  bool created = false;
  const support::Outcome outcome =
      support::outcome_of([&] { created = CreatePatientDatabase(environment, windows_path, patient, {}) == 1; });
  if (created) return 0;
  return outcome.last() ? outcome.last()->number() : -1;
}

std::string DatabaseTest::patient_database(std::string_view name) {
  // The file is created once and copied: the copies share their salt, so that their key is derived only once.
  static std::string content;
  std::string file = path(name);
  if (content.empty()) {
    EXPECT_EQ(creation_error(file, sample_patient()), 0);
    content = read_file(file);
  } else {
    write_file(file, content);
  }
  return file;
}

Opened DatabaseTest::open(const std::string& windows_path) const {
  return open_patient_database(environment, windows_path, false);
}

void DatabaseTest::execute(const std::string& windows_path, std::initializer_list<std::string_view> statements) const {
  const Opened opened = open(windows_path);
  for (const auto statement : statements) opened.database->execute(statement);
}

std::vector<std::string> DatabaseTest::rows(const std::string& windows_path, std::string_view query) const {
  const Opened opened = open(windows_path);
  std::vector<std::string> lines;
  const auto recordset = opened.database->open_recordset(query);
  for (; !recordset->eof(); recordset->move_next()) {
    std::string line;
    for (std::int32_t i = 0; i < recordset->field_count(); ++i) {
      if (i > 0) line += "|";
      line += text_of(recordset->value(i));
    }
    lines.push_back(line);
  }
  return lines;
}

PatientRecord sample_patient() {
  PatientRecord patient;
  patient.firstname = "Käthe";
  patient.name = "Müller-Lüdenscheidt";
  patient.street = "Am Wall 3";
  patient.zip = "04109";
  patient.city = "Leipzig";
  patient.phone = "0341 5550";
  patient.fax = "0341 5551";
  patient.therapy = 2;
  patient.birthday = engine::date_from(1951, 2, 28);
  patient.gender = 1;
  patient.email = "kaethe@example.org";
  patient.a1 = "erste";
  patient.a2 = "zweite";
  patient.a3 = "";
  patient.typ = 1;
  patient.height = 168;
  patient.number = "A-77";
  patient.insurance = "AOK \"Plus\"";
  patient.insurancenumber = "X123";
  patient.DiabetesSince = 1999;
  patient.InsulinSince = 2004;
  return patient;
}

std::string text_of(const engine::Value& value) {
  if (engine::is_null(value)) return "Null";
  if (const auto* date = std::get_if<engine::Date>(&value)) return engine::iso_text(*date);
  return engine::to_text(value);
}

}  // namespace database::testing
