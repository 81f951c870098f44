#include "support/language.h"

namespace support {

// Components are registered on Windows only; here every class name is a text table.
std::unique_ptr<LanguageComponent> create_installed_language(std::string_view /*class_name*/) { return nullptr; }

}  // namespace support
