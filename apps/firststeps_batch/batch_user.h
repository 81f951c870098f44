// The user of a run without a window. Messages are kept and printed later, questions get the answer that changes
// nothing, and the shell shows no dialogs.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "wizard/user_port.h"

namespace firststeps_batch {

/// Moves the files of a folder that match the pattern into the recycle bin without asking; returns the names of those
/// that were moved.
using Recycle = std::function<std::vector<std::string>(std::string_view folder, std::string_view pattern)>;

class BatchUser : public wizard::UserPort {
 public:
  /// Without `recycle` nothing is moved. If there is no recycle bin, files are deleted only with `for_good`.
  explicit BatchUser(bool for_good, Recycle recycle = {}) : for_good_(for_good), recycle_(std::move(recycle)) {}

  /// Raises 3059 for a question with OK and Cancel, because there Cancel is an answer that is remembered.
  int message_box(std::string_view text, std::uint32_t style, std::string_view title) override;
  std::optional<std::string> choose_folder(std::string_view title) override;
  bool open_file(std::string_view path) override;
  std::vector<std::string> recycle(std::string_view folder, std::string_view pattern) override;
  bool has_recycle_bin(std::string_view folder) override;
  bool is_network_path(std::string_view path) override;
  std::int32_t text_width(std::string_view text, std::string_view font) override;
  void set_topmost(bool topmost) override;

  /// Sets the folder that the next choose_folder() returns; without one, the choice is cancelled.
  void set_next_folder(std::string folder) { next_folder_ = std::move(folder); }
  const std::vector<std::string>& messages() const noexcept { return messages_; }

 private:
  bool for_good_;
  Recycle recycle_;
  std::vector<std::string> messages_;
  std::optional<std::string> next_folder_;
};

}  // namespace firststeps_batch
