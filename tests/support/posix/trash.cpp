#include "tests/support/trash.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace support::testing {

Trash::Trash(const TemporaryFolder& folder) : folder_(folder) {
  const char* const before = std::getenv("XDG_DATA_HOME");
  if (before != nullptr) before_ = before;
  setenv("XDG_DATA_HOME", folder.host("data").c_str(), 1);
}

Trash::~Trash() {
  if (before_.empty()) {
    unsetenv("XDG_DATA_HOME");
  } else {
    setenv("XDG_DATA_HOME", before_.c_str(), 1);
  }
}

void Trash::expect_file(std::string_view name, std::string_view content) const {
  const std::string trash = "data/Trash/";
  EXPECT_EQ(folder_.read(trash + "files/" + std::string(name)), content);
  const std::string note = folder_.read(trash + "info/" + std::string(name) + ".trashinfo").value_or("");
  EXPECT_TRUE(note.starts_with("[Trash Info]\nPath=" + folder_.host(""))) << note;
  EXPECT_NE(note.find("\nDeletionDate=2"), std::string::npos) << note;
}

}  // namespace support::testing
