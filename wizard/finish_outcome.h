// What a finish wrote or could not write, in its order, and the words in which the user is told at the end.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "wizard/installation_config.h"

namespace wizard {

struct FinishReport {
  enum class What { RegistryValue, IniKey, File, RecycledFile };
  struct Entry {
    What what;
    std::string place;  ///< key with its root, or file
    std::string name;   ///< value, or section and key; for a file what of it was written
    std::string value;  ///< empty for files; never the password
    bool written;
    std::string problem;  ///< empty when written
    int error = 0;        ///< number of the error that it failed with; 0 where there was none
    long reason = 0;      ///< number of the text that tells a user why, where the error does not
  };
  std::vector<Entry> entries;

  /// True where everything was written.
  bool complete() const noexcept { return std::ranges::all_of(entries, &Entry::written); }
};

/// What was written, each place below what lies there; what was not written is left out. Lines end in "\r\n".
std::string written_text(const InstallationConfig& config, const FinishReport& report);

}  // namespace wizard
