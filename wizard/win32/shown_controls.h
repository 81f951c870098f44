// Which native window shows which control, and where it stands.
#pragma once

#include <windows.h>

#include <memory>
#include <unordered_map>
#include <vector>

#include "wizard/form/form.h"
#include "wizard/win32/picture.h"

namespace wizard::win32 {

struct ShownControl {
  form::Control* control = nullptr;
  HWND window = nullptr;  ///< null for a control that nobody sees, or that nobody has seen yet
  int id = 0;
  Picture picture;  ///< of an image: the last one that was loaded
  /// Where it was placed last, in its container. The system looks up the screens whenever it is asked where a window
  /// is.
  mutable RECT placed{};
};

class ShownControls {
 public:
  explicit ShownControls(form::Form& form) : form_(form) {}

  /// Takes note of the control; it has no window yet.
  ShownControl& add(const form::Control& control);
  /// Creates the control's window at its place in that of its container, `form_window` for the form itself.
  void create_window(ShownControl& shown, HWND form_window, const RECT& place, UINT dpi);
  /// Null where there is none.
  ShownControl* of(const form::Control& control) const;
  ShownControl* of(HWND window) const;

  auto begin() const { return shown_.begin(); }
  auto end() const { return shown_.end(); }

 private:
  HWND container_window(const form::Control& control, HWND form_window) const;

  form::Form& form_;
  std::vector<std::unique_ptr<ShownControl>> shown_;
  std::unordered_map<const form::Control*, ShownControl*> by_control_;
  std::unordered_map<HWND, ShownControl*> by_window_;
};

/// The outermost container that the control lies in; itself where it lies on the form.
const form::Control& outermost(const form::Control& control);

/// True where the control and all around it are shown.
bool is_seen(const form::Control& control);

/// Where the form's design has the control in its container, as pixels.
RECT place_in_container(const form::Control& control, UINT dpi);

/// Where the control's window goes for a place that its page gives it: that of a combo box includes its list.
RECT window_place(const form::Control& control, RECT place, UINT dpi);

/// Gives a combo box the height of its place; its font must be known.
void fit_combo_box(const ShownControl& shown, UINT dpi);

/// Shows or hides an image as the form says; it is painted together with the images around it.
void show_image(const ShownControl& shown);

/// Moves the control's window to a place in that of its container, in pixels.
void place(const ShownControl& shown, RECT place, UINT dpi);

}  // namespace wizard::win32
