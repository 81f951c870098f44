#include "wizard/win32/look.h"

#include <array>
#include <string_view>

#include "support/encoding.h"
#include "wizard/win32/text.h"

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

/// Points and weight of a style.
struct Shape {
  int points;
  LONG weight;
};

Shape shape(TextStyle style) {
  switch (style) {
    case TextStyle::Heading:
      return {16, FW_SEMIBOLD};
    case TextStyle::Emphasis:
      return {9, FW_BOLD};
    case TextStyle::Normal:
      break;
  }
  return {9, FW_NORMAL};
}

Font make_font(const std::string& face, TextStyle style, UINT dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LOGFONTW description = metrics.lfMessageFont;
  const auto [points, weight] = shape(style);
  description.lfHeight = -MulDiv(points, static_cast<int>(dpi), 72);
  description.lfWidth = 0;
  description.lfWeight = weight;
  description.lfQuality = CLEARTYPE_QUALITY;
  if (!face.empty()) lstrcpynW(description.lfFaceName, wide(face).c_str(), LF_FACESIZE);
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
  Font& font = fonts_[{face, style}];
  if (!font) font = make_font(face, style, dpi);
  return font.get();
}

}  // namespace wizard::win32
