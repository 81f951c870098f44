#include "wizard/form/apply_texts.h"

#include <optional>
#include <vector>

#include "support/error.h"
#include "support/text.h"

namespace form {

namespace {

std::optional<long> text_number(std::string_view tag) {
  std::string mark(tag.substr(0, tag.find('^')));
  if (!mark.starts_with('L')) return std::nullopt;
  support::replace(mark, "L", "");
  return support::parse_whole<long>(mark);
}

bool has_font(Kind kind) noexcept {
  return kind != Kind::Image && kind != Kind::ScrollBar && kind != Kind::ProgressBar && kind != Kind::Timer;
}

/// Pictures and bars do not show their caption; a screen reader uses it as their name.
bool has_caption(Kind kind) noexcept { return kind != Kind::TextBox && kind != Kind::ComboBox && kind != Kind::Timer; }

void apply_caption_and_tooltip(Control& control, std::string_view text) {
  std::vector<std::string> parts;
  support::Split(text, parts, "|");
  if (!parts.empty() && !parts[0].empty()) control.set_caption(parts[0]);
  if (parts.size() > 1 && !parts[1].empty()) control.set_tooltip(parts[1]);
}

void apply_text(Control& control, const support::LanguageComponent& language) {
  const auto number = text_number(control.tag());
  if (!number) return;
  const std::string text = language.loadres(*number);
  if (control.kind() == Kind::Button)
    apply_caption_and_tooltip(control, text);
  else if (has_caption(control.kind()))
    control.set_caption(text);
}

}  // namespace

void apply_texts(Form& form, const support::LanguageComponent* language, std::string& font) {
  support::Procedure procedure{"code!ApplyTexts"};
  const std::string configured = font;
  if (font.empty()) font = "Arial";
  for (const auto& control : form.controls()) {
    procedure.step([&] {
      if (!configured.empty() && has_font(control->kind())) control->set_font(configured);
    });
    procedure.step([&] {
      if (language) apply_text(*control, *language);
    });
  }
  procedure.step([&] {
    const auto number = text_number(form.tag());
    if (number && language) form.set_caption(language->loadres(*number));
  });
}

}  // namespace form
