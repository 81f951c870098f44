// Writes one thing after the other at the finish and records each; in a preview it only records. A failure becomes an
// entry of the report with its reason. Nothing here raises.
#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "wizard/context.h"
#include "wizard/finish_report.h"

namespace wizard {

class FinishWriter {
 public:
  enum class Mode { Write, Preview };  ///< a preview changes nothing; its entries are not `written` and have no problem
  FinishWriter(Context& context, Mode mode) : context_(context), mode_(mode) {}

  bool previewing() const noexcept { return mode_ == Mode::Preview; }

  /// Writes a text under the current user root.
  void registry_value(std::string_view key, std::string_view name, std::string_view value);
  /// Writes a value of an ini file, given by its path.
  void ini_key(std::string_view file, std::string_view section, std::string_view key, std::string_view value);
  /// Runs `action`, which writes `what` of a file. False if it failed; the reason is then the error of the last step
  /// that was passed over meanwhile. A preview does not run it and returns true.
  bool file(std::string_view path, std::string_view what, const std::function<bool()>& action);
  /// Records something that could not be done. `reason_text` is the number of the text that tells the user why.
  void problem(FinishReport::What kind, std::string_view place, std::string_view what, std::string_view reason,
               long reason_text);
  /// What happens to files that shall be discarded. If there is no recycle bin, they are deleted for good or kept.
  enum class Discard { Recycle, ForGood, Keep };
  /// Discards the files of a folder that match a pattern and records an entry for each; without a file there is no
  /// entry.
  void discard(std::string_view folder, std::string_view pattern, Discard how);

  /// Hands over the report. The writer must not be used afterwards.
  FinishReport take() { return std::move(report_); }

 private:
  void record(FinishReport::Entry entry);

  Context& context_;
  Mode mode_;
  FinishReport report_;
};

}  // namespace wizard
