// Sweeps of faults over procedures that write databases, with checks of what each may leave of a file or of a folder.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/faults/database_state.h"
#include "tests/faults/fault_sweep.h"
#include "tests/faults/fault_vfs.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {

using faults::Ended;

inline constexpr std::string_view no_file = "(no file)";

class DatabaseFaults : public OldLayout {
 protected:
  DatabaseFaults() { faults::install_fault_vfs(); }

  std::string host(const std::string& windows_path) const {
    return support::host_file_system().host_path(windows_path);
  }
  std::string state(const std::string& file) const { return faults::database_state(host(file), environment.password); }

  /// `run` changes the file in one step. Whatever interrupts it, the file must hold the old or the new state, and the
  /// one that `run` reported.
  void sweep_over_file(std::string_view name, const std::string& file, const std::function<bool()>& run) {
    const std::string content = read_file(file);
    const std::string before = state(file);
    EXPECT_TRUE(run());
    const std::string after = state(file);
    ASSERT_NE(before, after);
    const auto prepare = [&] {
      std::filesystem::remove(host(file) + "-journal");
      write_file(file, content);
    };
    const auto check = [&](Ended ended) {
      const bool untouched = !std::filesystem::exists(host(file) + "-journal") && read_file(file) == content;
      const std::string found = untouched ? before : state(file);
      if (ended != Ended::Failed && found == after) return;
      if (ended != Ended::Succeeded && found == before) return;
      ADD_FAILURE() << "ended " << static_cast<int>(ended)
                    << (found == before  ? " with the state before"
                        : found == after ? " with the state after"
                                         : " in between");
    };
    faults::sweep(name, {prepare, {}, run, check});
  }

  /// Returns a function that puts the folder back into its present state.
  std::function<void()> restoring() const {
    std::map<std::string, std::string> contents;
    for (const std::string& name : files()) contents[name] = read_file(path(name));
    return [this, contents] {
      for (const std::string& name : files()) {
        if (!contents.contains(name)) std::filesystem::remove(host(path(name)));
      }
      for (const auto& [name, content] : contents) write_file(path(name), content);
    };
  }

  /// `run` makes a new file, which must exist as a whole or not at all. Nothing else may be left behind, unless the
  /// process has died.
  void sweep_over_new_file(std::string_view name, const std::string& file, const std::function<bool()>& run) {
    const std::vector<std::string> old_files = files();
    std::string whole;
    const auto prepare = [&] {
      for (const std::string& found : files()) {
        if (std::ranges::find(old_files, found) == old_files.end()) std::filesystem::remove(host(path(found)));
      }
    };
    const auto check = [&](Ended ended) {
      const std::string found = state(file);
      if (whole.empty()) whole = found;
      EXPECT_TRUE(found == whole || found == no_file) << "a part of a database";
      if (ended == Ended::Died) return;
      EXPECT_EQ(found == whole, ended == Ended::Succeeded);
      EXPECT_EQ(files().size(), old_files.size() + (ended == Ended::Succeeded ? 1U : 0U)) << files().front();
    };
    faults::sweep(name, {prepare, {}, run, check});
  }
};

}  // namespace database::testing
