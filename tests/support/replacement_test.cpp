#include <gtest/gtest.h>

#include <map>

#include "support/abandoned_files.h"

namespace support {
namespace {

/// Files in memory. A failed replacement has removed the old file, as it does on some systems.
class LosingCalls : public ReplacementCalls {
 public:
  bool replace(const std::string& source, const std::string& target) override {
    if (loses_target) files.erase(target);
    if (replace_fails) return false;
    files[target] = files[source];
    files.erase(source);
    return true;
  }
  bool rename(const std::string& source, const std::string& target) override {
    if (rename_fails || files.contains(target)) return false;
    files[target] = files[source];
    files.erase(source);
    return true;
  }
  bool exists(const std::string& path) const override { return files.contains(path); }
  void remove(const std::string& path) override { files.erase(path); }

  bool replace_fails = false, loses_target = false, rename_fails = false;
  std::map<std::string, std::string> files;
};

TEST(Replacement, NeverLeavesNeitherFile) {
  using Files = std::map<std::string, std::string>;
  struct Case {
    bool existed, replace_fails, loses_target, rename_fails;
    Replaced result;
    Files then;
  };
  const Files done{{"a.ini", "new"}}, old{{"a.ini", "old"}}, source{{"a.ini.writing-1", "new"}};
  for (const Case& row :
       {Case{true, false, false, false, Replaced::Done, done}, Case{false, false, false, false, Replaced::Done, done},
        Case{true, true, false, false, Replaced::Refused, old}, Case{true, true, true, false, Replaced::Done, done},
        Case{true, true, true, true, Replaced::OnlySource, source},
        Case{false, false, false, true, Replaced::Refused, {}}}) {
    LosingCalls calls;
    calls.replace_fails = row.replace_fails;
    calls.loses_target = row.loses_target;
    calls.rename_fails = row.rename_fails;
    calls.files["a.ini.writing-1"] = "new";
    if (row.existed) calls.files["a.ini"] = "old";
    EXPECT_EQ(put_in_place(calls, "a.ini.writing-1", "a.ini"), row.result);
    EXPECT_EQ(calls.files, row.then) << row.existed << row.replace_fails << row.loses_target << row.rename_fails;
  }
}

}  // namespace
}  // namespace support
