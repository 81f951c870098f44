// The tool tips of the window's controls, with the text that each control has by the time it is shown.
#pragma once

#include <windows.h>

#include "wizard/win32/shown_controls.h"

namespace wizard::win32 {

class ToolTips {
 public:
  ToolTips() = default;
  ~ToolTips();
  ToolTips(const ToolTips&) = delete;
  ToolTips& operator=(const ToolTips&) = delete;

  void create(HWND form_window);
  void add(const ShownControl& shown);
  /// Answers a notification of a tip that wants its text; false for any other notification.
  bool answer(NMHDR& notification, const ShownControls& controls);

 private:
  HWND form_window_ = nullptr, tips_ = nullptr;
  std::wstring text_;  ///< of the tip that is shown
};

}  // namespace wizard::win32
