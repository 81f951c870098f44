// The test server in the registry, for as long as an object of these lives.
#pragma once

#include <string>
#include <vector>

#include "tests/automation/server_library.h"

namespace automation_test {

inline constexpr const char* newer_engine = "DAO.DBEngine.36";
inline constexpr const char* older_engine = "DAO.DBEngine.35";
inline constexpr const char* language_class = "Probe.LanguageDLL";

/// Registers these classes. Throws where one is registered already, unless a run of this test has left it.
class Registration {
 public:
  explicit Registration(std::vector<std::string> class_names, const std::wstring& library = server_path());
  ~Registration();
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;

 private:
  std::vector<std::string> class_names_;
};

}  // namespace automation_test
