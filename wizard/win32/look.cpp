#include "wizard/win32/look.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <string_view>
#include <utility>

#include "support/encoding.h"
#include "support/win32/wide.h"

namespace wizard::win32 {
namespace {

struct StyleRow {
  std::string_view control;
  TextStyle style;
};

constexpr std::array<StyleRow, 8> styles = {{
    {"lblHeading", TextStyle::Heading},
    {"Label2", TextStyle::Heading},
    {"lblChartInfoTitle", TextStyle::Emphasis},
    {"lblFolder", TextStyle::Emphasis},
    {"lblDataEntry", TextStyle::Hint},
    {"lblTargetHint", TextStyle::Hint},
    {"optThumb", TextStyle::Hint},
    {"lstSteps", TextStyle::Hint},
}};

/// By TextStyle: per cent of the size of the system's messages, and how bold.
struct TypeRow {
  int size, weight;
};
constexpr std::array<TypeRow, 4> types = {{{110, FW_NORMAL}, {180, FW_NORMAL}, {110, FW_SEMIBOLD}, {100, FW_NORMAL}}};

/// The font of the system's messages at a resolution, as the program found it first: the system looks up some thirty
/// settings for each answer.
const LOGFONTW& message_font(UINT dpi) {
  static std::map<UINT, LOGFONTW> known;
  const auto [font, is_new] = known.try_emplace(dpi);
  if (is_new) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
    font->second = metrics.lfMessageFont;
  }
  return font->second;
}

/// Windows keeps it here and nowhere in its settings of old; the interface that tells of it is not for such programs.
int text_scale_now() {
  constexpr DWORD least = 100, most = 225;
  DWORD scale = 0, size = sizeof scale;
  const LSTATUS found = RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Accessibility", L"TextScaleFactor",
                                     RRF_RT_REG_DWORD, nullptr, &scale, &size);
  return found != ERROR_SUCCESS ? usual_text_scale : static_cast<int>(std::clamp(scale, least, most));
}

int& known_text_scale() {
  static int scale = text_scale_now();
  return scale;
}

Font make_font(const std::string& face, TextStyle style, UINT dpi) {
  LOGFONTW description = message_font(dpi);
  const TypeRow& type = types[static_cast<std::size_t>(style)];
  const int usual_size = std::abs(description.lfHeight) * text_scale() / usual_text_scale;
  description.lfHeight = -MulDiv(usual_size, type.size, 100);
  description.lfWidth = 0;
  description.lfWeight = type.weight;
  description.lfQuality = CLEARTYPE_QUALITY;
  if (!face.empty()) {
    description.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(description.lfFaceName, support::wide(face).c_str(), LF_FACESIZE);
  }
  return Font(CreateFontIndirectW(&description));
}

}  // namespace

TextStyle text_style(const form::Control& control) {
  for (const StyleRow& row : styles) {
    if (support::equal_ignoring_case(row.control, control.name())) return row.style;
  }
  return TextStyle::Normal;
}

int text_scale() { return known_text_scale(); }

bool refresh_text_scale() {
  const int now = text_scale_now();
  return std::exchange(known_text_scale(), now) != now;
}

int scroll_bar_width(UINT dpi) {
  static std::map<UINT, int> known;
  const auto [width, is_new] = known.try_emplace(dpi);
  if (is_new) width->second = GetSystemMetricsForDpi(SM_CXVSCROLL, dpi);
  return width->second;
}

HFONT Fonts::font(const std::string& face, TextStyle style, UINT dpi) {
  Font& font = fonts_[{face, style, dpi, text_scale()}];
  if (!font) font = make_font(face, style, dpi);
  return font.get();
}

}  // namespace wizard::win32
