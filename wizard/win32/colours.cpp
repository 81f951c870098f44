#include "wizard/win32/colours.h"

// dwmapi.h needs windows.h before it.
#include <dwmapi.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <ranges>
#include <utility>

#include "support/win32/system_function.h"
#include "wizard/win32/gdi.h"

namespace wizard::win32 {
namespace {

struct ColourRow {
  COLORREF light, dark;
  int system;  ///< with high contrast
};

constexpr auto colour_count = static_cast<std::size_t>(Colour::Count);

/// By Colour.
constexpr std::array<ColourRow, colour_count> colours = {{
    {RGB(255, 255, 255), RGB(31, 33, 36), COLOR_WINDOW},
    {RGB(26, 26, 26), RGB(240, 240, 240), COLOR_WINDOWTEXT},
    {RGB(11, 79, 108), RGB(143, 211, 244), COLOR_WINDOWTEXT},
    {RGB(89, 89, 89), RGB(190, 194, 198), COLOR_WINDOWTEXT},
    {RGB(100, 100, 100), RGB(160, 164, 168), COLOR_GRAYTEXT},
    {RGB(150, 50, 10), RGB(255, 184, 107), COLOR_WINDOWTEXT},
    {RGB(11, 79, 108), RGB(143, 211, 244), COLOR_WINDOWTEXT},
    {RGB(205, 212, 218), RGB(70, 74, 79), COLOR_WINDOWTEXT},
    {RGB(15, 118, 150), RGB(76, 194, 232), COLOR_HIGHLIGHT},
    {RGB(255, 255, 255), RGB(16, 18, 20), COLOR_HIGHLIGHTTEXT},
    {RGB(240, 240, 240), RGB(43, 46, 50), COLOR_BTNFACE},
    {RGB(26, 26, 26), RGB(240, 240, 240), COLOR_BTNTEXT},
    {RGB(255, 255, 255), RGB(43, 46, 50), COLOR_WINDOW},
    {RGB(26, 26, 26), RGB(240, 240, 240), COLOR_WINDOWTEXT},
    {RGB(225, 225, 225), RGB(58, 62, 67), COLOR_BTNFACE},
    {RGB(26, 26, 26), RGB(240, 240, 240), COLOR_BTNTEXT},
    {RGB(110, 110, 110), RGB(150, 154, 158), COLOR_WINDOWTEXT},
}};

constexpr ColourPair pairs[] = {
    {Colour::Text, Colour::Page, true},         {Colour::Heading, Colour::Page, true},
    {Colour::Hint, Colour::Page, true},         {Colour::Disabled, Colour::Page, true},
    {Colour::Warning, Colour::Page, true},      {Colour::Note, Colour::Page, true},
    {Colour::Choice, Colour::Page, false},      {Colour::ChoiceText, Colour::Choice, true},
    {Colour::BarText, Colour::Bar, true},       {Colour::Disabled, Colour::Bar, true},
    {Colour::FieldText, Colour::Field, true},   {Colour::Disabled, Colour::Field, true},
    {Colour::ButtonText, Colour::Button, true}, {Colour::Edge, Colour::Page, false},
    {Colour::Edge, Colour::Bar, false},         {Colour::Edge, Colour::Field, false},
};

bool high_contrast() {
  HIGHCONTRASTW setting{};
  setting.cbSize = sizeof setting;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) != 0 &&
         (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

bool apps_are_dark() {
  DWORD light = 1, size = sizeof light;
  const LSTATUS result =
      RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                   L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
  return result == ERROR_SUCCESS && light == 0;
}

Scheme wanted_scheme() {
  if (high_contrast()) return Scheme::Contrast;
  return apps_are_dark() ? Scheme::Dark : Scheme::Light;
}

/// The colours in force, as they were last looked up. One thread draws.
struct Palette {
  std::optional<Scheme> fixed, scheme;
  std::array<COLORREF, colour_count> values{};
  std::map<COLORREF, Brush> brushes;  ///< those handed out stay: a window may still hold one

  bool refresh() {
    const Scheme now = fixed.value_or(wanted_scheme());
    std::array<COLORREF, colour_count> found{};
    for (std::size_t n = 0; n < colour_count; ++n) found[n] = colour_in(now, static_cast<Colour>(n));
    const bool changed = scheme != now || found != values;
    scheme = now;
    values = found;
    return changed;
  }
};

Palette& palette() {
  static Palette only;
  if (!only.scheme) only.refresh();
  return only;
}

}  // namespace

std::span<const ColourPair> colour_pairs() { return pairs; }

Scheme scheme() { return palette().scheme.value_or(Scheme::Light); }

bool refresh_scheme() { return palette().refresh(); }

void fix_scheme(Scheme scheme) {
  palette().fixed = scheme;
  palette().refresh();
}

int system_colour(Colour which) { return colours[static_cast<std::size_t>(which)].system; }

COLORREF colour_in(Scheme scheme, Colour which) {
  const ColourRow& row = colours[static_cast<std::size_t>(which)];
  if (scheme == Scheme::Contrast) return GetSysColor(row.system);
  return scheme == Scheme::Dark ? row.dark : row.light;
}

COLORREF colour(Colour which) { return palette().values[static_cast<std::size_t>(which)]; }

HBRUSH brush(Colour which) {
  Brush& made = palette().brushes[colour(which)];
  if (!made) made.reset(CreateSolidBrush(colour(which)));
  return made.get();
}

/// Before version 2004 the attribute had another number; where there is neither, the bar stays as it is.
void dress_frame(HWND window) {
  constexpr DWORD dark_title = 20, dark_title_before = 19;
  const BOOL dark = scheme() == Scheme::Dark ? TRUE : FALSE;
  // Frames are light until one is told.
  static bool told = false;
  if (dark == FALSE && !told) return;
  told = true;
  static auto* const set =
      support::system_function<decltype(DwmSetWindowAttribute)>(L"dwmapi.dll", "DwmSetWindowAttribute");
  if (set != nullptr && FAILED(set(window, dark_title, &dark, sizeof dark)))
    set(window, dark_title_before, &dark, sizeof dark);
}

}  // namespace wizard::win32
