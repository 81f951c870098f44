// Puts another database file in the place of an existing one, whichever engine wrote the two.
#pragma once

#include <string_view>

namespace engine {

/// Puts `source`, a database that is complete, closed and synced, in the place of the file `target`. All are Windows
/// paths of one folder. Where `kept` is not empty, the old file stays under that name. At any moment the old file or
/// the new one has the name `target`. If the file system gives a file no second name, there is a moment in which `kept`
/// has the old file and no file has the name `target`. On failure `target` is as it was, and `source` may be gone.
/// Raises 3045 where anybody has it open, 3204 where `kept` is taken, 3343 where the journal of an incomplete change
/// lies beside it, 3043 where the system refuses, and the errors of an opening where the file cannot be opened.
void exchange_file(std::string_view source, std::string_view target, std::string_view kept);

}  // namespace engine
