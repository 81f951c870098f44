// How the window looks: colours, and which control is written in which size. Everything else is the system's own.
#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "wizard/form/form.h"
#include "wizard/win32/gdi.h"

namespace wizard::win32 {

inline constexpr COLORREF page_colour = RGB(255, 255, 255);
inline constexpr COLORREF heading_colour = RGB(11, 79, 108);
inline constexpr COLORREF text_colour = RGB(32, 32, 32);
inline constexpr COLORREF quiet_colour = RGB(90, 96, 102);
inline constexpr COLORREF line_colour = RGB(214, 220, 225);
inline constexpr COLORREF choice_colour = RGB(15, 118, 150);

/// The kind of text that a control shows.
enum class TextStyle { Normal, Heading, Emphasis };
TextStyle text_style(const form::Control& control);

/// The fonts of one window at one resolution, made when first asked for.
class Fonts {
 public:
  /// The font of a control by its font name; the system's where the name is empty or unknown.
  HFONT font(const std::string& face, TextStyle style, UINT dpi);
  /// Forgets all: no window may use one of them any more.
  void clear() { fonts_.clear(); }

 private:
  std::map<std::pair<std::string, TextStyle>, Font> fonts_;
};

}  // namespace wizard::win32
