#include "wizard/win32/look.h"

#include <array>
#include <string_view>

#include "support/encoding.h"
#include "support/win32/wide.h"

namespace wizard::win32 {
namespace {

struct ColourRow {
  COLORREF own;  ///< CLR_INVALID: always the system's
  int system;    ///< number of the system's colour
};

/// By Colour.
constexpr std::array<ColourRow, 6> colours = {{
    {CLR_INVALID, COLOR_WINDOW},
    {CLR_INVALID, COLOR_WINDOWTEXT},
    {RGB(11, 79, 108), COLOR_WINDOWTEXT},
    {CLR_INVALID, COLOR_GRAYTEXT},
    {RGB(205, 212, 218), COLOR_WINDOWFRAME},
    {RGB(15, 118, 150), COLOR_HIGHLIGHT},
}};

bool high_contrast() {
  HIGHCONTRASTW setting{};
  setting.cbSize = sizeof setting;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) != 0 &&
         (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

struct StyleRow {
  std::string_view control;
  TextStyle style;
};

constexpr std::array<StyleRow, 4> styles = {{
    {"lblHeading", TextStyle::Heading},
    {"Label2", TextStyle::Heading},
    {"lblChartInfoTitle", TextStyle::Emphasis},
    {"lblFolder", TextStyle::Emphasis},
}};

/// By TextStyle.
constexpr std::array<int, 3> points = {10, 16, 11};
constexpr int points_to_the_inch = 72;

/// The system's own font where none is named.
LOGFONTW described_font(const std::string& face) {
  LOGFONTW description{};
  description.lfCharSet = DEFAULT_CHARSET;
  if (!face.empty()) {
    lstrcpynW(description.lfFaceName, support::wide(face).c_str(), LF_FACESIZE);
    return description;
  }
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  return metrics.lfMessageFont;
}

Font make_font(const std::string& face, TextStyle style, UINT dpi) {
  LOGFONTW description = described_font(face);
  description.lfHeight = -MulDiv(points[static_cast<std::size_t>(style)], static_cast<int>(dpi), points_to_the_inch);
  description.lfWidth = 0;
  description.lfWeight = FW_NORMAL;
  description.lfQuality = CLEARTYPE_QUALITY;
  return Font(CreateFontIndirectW(&description));
}

}  // namespace

COLORREF colour(Colour which) {
  const ColourRow& row = colours[static_cast<std::size_t>(which)];
  return row.own == CLR_INVALID || high_contrast() ? GetSysColor(row.system) : row.own;
}

HBRUSH page_brush() { return GetSysColorBrush(COLOR_WINDOW); }

TextStyle text_style(const form::Control& control) {
  for (const StyleRow& row : styles) {
    if (support::equal_ignoring_case(row.control, control.name())) return row.style;
  }
  return TextStyle::Normal;
}

HFONT Fonts::font(const std::string& face, TextStyle style, UINT dpi) {
  Font& font = fonts_[{face, {style, dpi}}];
  if (!font) font = make_font(face, style, dpi);
  return font.get();
}

}  // namespace wizard::win32
