#include "wizard/win32/text_sizes.h"

#include "support/win32/wide.h"
#include "wizard/win32/control_window.h"

namespace wizard::win32 {

TextSizes::TextSizes(Fonts& fonts, UINT dpi) : fonts_(fonts), dpi_(dpi), text_scale_(text_scale()) {}

int TextSizes::with_text(int length) const { return MulDiv(scaled(length), text_scale_, usual_text_scale); }

SIZE TextSizes::measure(const form::Control& control, const std::string& text, int width, UINT flags) const {
  const Selection font(context_.get(), fonts_.font(control.font(), text_style(control), dpi_));
  if (control.kind() == form::Kind::Label && !control.tag().starts_with('L')) flags |= DT_NOPREFIX;
  RECT needed{0, 0, width, 0};
  DrawTextW(context_.get(), support::wide(text).c_str(), -1, &needed, DT_CALCRECT | flags);
  return {needed.right, needed.bottom};
}

int TextSizes::width(const form::Control& control) const {
  const std::string& text = shows_text(control) ? control.text() : control.caption();
  return text.empty() ? 0 : static_cast<int>(measure(control, text, 0, 0).cx);
}

int TextSizes::height(const form::Control& control, int width) const {
  const std::string& text = shows_text(control) ? control.text() : control.caption();
  return text.empty() ? 0 : static_cast<int>(measure(control, text, width, DT_WORDBREAK).cy);
}

int TextSizes::line(const form::Control& control) const {
  return static_cast<int>(measure(control, "X", 0, DT_SINGLELINE).cy);
}

}  // namespace wizard::win32
