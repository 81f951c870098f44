// What the wizard asks of its user and of the shell, apart from the form itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wizard {

/// Styles of message boxes, as the platform counts them.
namespace message_style {
inline constexpr std::uint32_t exclamation = 48;
inline constexpr std::uint32_t critical_system_modal = 4112;
inline constexpr std::uint32_t critical_foreground = 65552;
inline constexpr std::uint32_t information_foreground = 65600;
inline constexpr std::uint32_t yes_no_system_modal = 4100;
}  // namespace message_style

/// The button of a message box that says yes.
inline constexpr int yes_button = 6;

/// Paths are Windows paths.
class UserPort {
 public:
  virtual ~UserPort() = default;
  /// Returns the button that was pressed (OK 1, Cancel 2, Yes 6, No 7).
  virtual int message_box(std::string_view text, std::uint32_t style, std::string_view title) = 0;
  /// The sound of a failure.
  virtual void beep() {}
  /// The chosen folder; nothing if the user cancels.
  virtual std::optional<std::string> choose_folder(std::string_view title) = 0;
  /// Opens a file with the user's program for it (verb "open"). False if that failed.
  virtual bool open_file(std::string_view path) = 0;
  /// Deletes the files that match a pattern into the recycle bin. They can be restored, and the shell asks for
  /// confirmation itself. Returns the names of the files that were moved.
  virtual std::vector<std::string> recycle(std::string_view folder, std::string_view pattern) = 0;
  /// False if recycle() would delete for good, because the folder has no recycle bin.
  virtual bool has_recycle_bin(std::string_view folder) {
    static_cast<void>(folder);
    return true;
  }
  /// True for a folder on a network drive.
  virtual bool is_network_path(std::string_view path) = 0;
  /// Width of a text in a font, named by its face, at the size of the controls; in twips.
  virtual std::int32_t text_width(std::string_view text, std::string_view font) = 0;
  /// Keeps the window above all others, or no longer does so. Does nothing without a window.
  virtual void set_topmost(bool topmost) = 0;
};

}  // namespace wizard
