// The tool tips of the window's controls, with the text that each control has by the time it is shown.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "wizard/win32/shown_controls.h"

namespace wizard::win32 {

class ToolTips {
 public:
  ToolTips() = default;
  ~ToolTips();
  ToolTips(const ToolTips&) = delete;
  ToolTips& operator=(const ToolTips&) = delete;

  /// Takes note of a control; nothing is created yet.
  void add(const ShownControl& shown);
  /// Makes the tips of those noted; false where there were none.
  bool create(HWND form_window);
  /// Answers a notification of a tip that wants its text; false for any other notification.
  bool answer(NMHDR& notification, const ShownControls& controls);

 private:
  HWND tips_ = nullptr;
  std::vector<HWND> noted_;
  std::wstring text_;  ///< of the tip that is shown
};

}  // namespace wizard::win32
