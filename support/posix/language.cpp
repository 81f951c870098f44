#include "support/language.h"

namespace support {

// Only Windows has registered components; here every class name means a text table.
std::unique_ptr<LanguageComponent> create_installed_language(std::string_view /*class_name*/) { return nullptr; }

}  // namespace support
