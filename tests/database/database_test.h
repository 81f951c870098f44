// What the tests of this room share: a folder, an environment with texts and settings that the test gives, a patient
// database to work on, and rows as text.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/creation/create_database.h"
#include "database/environment.h"
#include "database/open_database.h"

namespace database::testing {

/// Gives "Text N" for the number N, unless the test sets another text.
class Texts : public support::LanguageComponent {
 public:
  std::string loadres(long number) const override;
  std::map<long, std::string> given;
};

/// The section "timezones" of the settings file.
class ZoneFile : public support::IniFiles {
 public:
  std::string value(std::string_view file, std::string_view section, std::string_view key, std::string_view fallback,
                    std::size_t size) const override;
  std::string keys(std::string_view, std::string_view, std::string_view, std::size_t) const override { return {}; }
  std::string sections(std::string_view, std::string_view, std::size_t) const override { return {}; }
  bool write(std::string_view, std::string_view, std::string_view, std::string_view) override { return false; }
  std::map<std::string, std::string, std::less<>> values;
};

using Opened = OpenPatient;

struct Message {
  std::string text;
  std::uint32_t style = 0;
};

class DatabaseTest : public ::testing::Test {
 public:
  DatabaseTest();
  ~DatabaseTest() override;

  /// Windows path of a file in the test's folder.
  std::string path(std::string_view name) const { return folder + "\\" + std::string(name); }
  std::vector<std::string> files() const { return support::host_file_system().files(folder, "*"); }
  void write_file(const std::string& windows_path, std::string_view content) const;
  std::string read_file(const std::string& windows_path) const;

  /// A new patient database with the password "geheim", as CreatePatientDatabase makes it; returns its path.
  std::string patient_database(std::string_view name = "patient.das");
  /// The number of the error that ends CreatePatientDatabase; 0 if it succeeds.
  int creation_error(const std::string& windows_path, const PatientRecord& patient) const;
  Opened open(const std::string& windows_path) const;
  /// Runs statements; the file is opened again for each.
  void execute(const std::string& windows_path, std::initializer_list<std::string_view> statements) const;
  /// The rows of a query, with values joined by "|": Null, numbers as German users write them, dates "YYYY-MM-DD
  /// HH:MM:SS".
  std::vector<std::string> rows(const std::string& windows_path, std::string_view query) const;

  Texts texts;
  ZoneFile zone_file;
  std::vector<Message> messages;
  Environment environment;
  std::string folder;
};

PatientRecord sample_patient();
std::string text_of(const engine::Value& value);
inline engine::Date time_of_day(int hour, int minute) { return engine::date_from(1899, 12, 30, hour, minute); }

}  // namespace database::testing
