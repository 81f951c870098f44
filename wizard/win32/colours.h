// The colours of the program's own windows, as one table: for a light and for a dark appearance, and for high contrast,
// where they are the system's alone. Which of the three is in force follows the user's settings in Windows.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

namespace wizard::win32 {

enum class Scheme : std::uint8_t { Light, Dark, Contrast };

enum class Colour : std::uint8_t {
  Page,
  Text,
  Heading,
  Hint,      ///< small print
  Disabled,  ///< text of what cannot be used now
  Warning,   ///< text and icon of a finding that is to be checked
  Note,      ///< those of one that only tells something
  Line,      ///< between parts of the window: decoration
  Choice,    ///< what is chosen, done or has the focus; also the ground of ChoiceText
  ChoiceText,
  Bar,  ///< the ground of the buttons at the bottom
  BarText,
  Field,  ///< what is typed into
  FieldText,
  Button,
  ButtonText,
  Edge,  ///< around fields, buttons and marks: has to be seen
  Count,
};

/// Two colours that stand one over the other.
struct ColourPair {
  Colour above, ground;
  bool is_text;  ///< to be read, not only to be seen
};

/// Every pair that the windows draw; what is drawn otherwise belongs into this list.
std::span<const ColourPair> colour_pairs();

/// The scheme in force.
Scheme scheme();
/// Looks at the user's settings; true where the scheme or a colour of the system is another one now.
bool refresh_scheme();
/// From now on this one, whatever the settings say.
void fix_scheme(Scheme scheme);

COLORREF colour(Colour which);
/// The colour in a scheme; that of high contrast as the system has it now.
COLORREF colour_in(Scheme scheme, Colour which);
/// The number of the system's colour that stands for this one with high contrast.
int system_colour(Colour which);

/// Lives as long as the program.
HBRUSH brush(Colour which);
/// The page's background.
inline HBRUSH page_brush() { return brush(Colour::Page); }

/// Gives a frame window a title bar of the scheme in force.
void dress_frame(HWND window);

}  // namespace wizard::win32
