// Keeps the test server in the registry as long as this object lives.
#pragma once

#include <string>
#include <vector>

#include "tests/automation/server_library.h"

namespace automation_test {

inline constexpr const char* newer_engine = "DAO.DBEngine.36";
inline constexpr const char* older_engine = "DAO.DBEngine.35";
inline constexpr const char* language_class = "Probe.LanguageDLL";

/// Registers these classes. Throws if one is registered already, unless an earlier run of this test left it.
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
