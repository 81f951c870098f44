// Gives every control of a form the text that its tag names, and the configured font.
#pragma once

#include <string>

#include "support/language.h"
#include "wizard/form/form.h"

namespace form {

/// A tag "L4650" or "L4650^anything" names text 4650; any other tag is ignored. For a button, a text "caption|tooltip"
/// sets both, and an empty part leaves the button's own. For other controls, the whole text becomes the caption. An
/// empty `font` becomes "Arial", but the controls keep their font. Without a language component the captions stay.
/// Never raises.
void apply_texts(Form& form, const support::LanguageComponent* language, std::string& font);

}  // namespace form
