// Gives every control of a form the text that its tag names and the configured font.
#pragma once

#include <string>

#include "support/language.h"
#include "wizard/form/form.h"

namespace form {

/// A tag "L4650" or "L4650^anything" names text 4650; any other tag is left alone. On buttons a text "caption|tooltip"
/// sets both, and an empty part keeps what the button has; on other controls the whole text becomes the caption. An
/// empty `font` becomes "Arial" and the controls keep theirs. Without a language component the captions stay. Never
/// raises.
void apply_texts(Form& form, const support::LanguageComponent* language, std::string& font);

}  // namespace form
