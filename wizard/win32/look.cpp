#include "wizard/win32/look.h"

#include <array>
#include <string_view>

#include "support/encoding.h"
#include "support/win32/wide.h"

namespace wizard::win32 {
namespace {

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
