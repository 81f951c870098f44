// The error journal of a program's run: off, unless the program's arguments or the installation's settings ask for it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "apps/console/arguments.h"
#include "support/error_journal.h"

namespace console {

inline constexpr Option journal_option{"--journal", "FILE",
                                       "Keep an error journal: which statements were passed over."};

/// The journal to `file` (a host path) where it is given and not empty, else to the one that the key "journal"
/// in the section "setup" of "setup.ini" names: a Windows path, a relative one from `folder`, the installation's (a
/// Windows path with its trailing backslash; empty where it is not known). Null where neither is there: no journal.
std::unique_ptr<support::ErrorJournal> open_journal(std::string_view program, const std::optional<std::string>& file,
                                                    const std::string& folder);

}  // namespace console
