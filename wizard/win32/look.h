// How the window's texts look: which control is written in which size, and in which colour (colours.h).
#pragma once

#include <windows.h>

#include <compare>
#include <map>
#include <string>

#include "wizard/form/form.h"
#include "wizard/win32/colours.h"
#include "wizard/win32/gdi.h"

namespace wizard::win32 {

/// The kind of text that a control shows. There are three sizes: emphasis has that of normal text.
enum class TextStyle { Normal, Heading, Emphasis, Hint };
TextStyle text_style(const form::Control& control);

/// What the user has set as the size of all texts, in per cent of the usual one, as it was looked up last.
int text_scale();
/// Looks it up anew; true where it is another one.
bool refresh_text_scale();
inline constexpr int usual_text_scale = 100;

/// In pixels; as the program found it first.
int scroll_bar_width(UINT dpi);

/// Fonts by face, style, resolution and text size, made when first asked for. Their sizes follow the font of the
/// system's messages and the user's text size.
class Fonts {
 public:
  /// The font of a face name; the system's where the name is empty or unknown. Lives as long as this.
  HFONT font(const std::string& face, TextStyle style, UINT dpi);

 private:
  struct Key {
    std::string face;
    TextStyle style;
    UINT dpi;
    int text_scale;
    friend auto operator<=>(const Key&, const Key&) = default;
  };
  std::map<Key, Font> fonts_;
};

}  // namespace wizard::win32
