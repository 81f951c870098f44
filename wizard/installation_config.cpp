#include "wizard/installation_config.h"

namespace wizard {

std::string InstallationConfig::text(long number) const {
  const std::string text = LanguageObject ? LanguageObject->loadres(number) : std::string();
  return text.empty() ? support::german_texts().loadres(number) : text;
}

std::string InstallationConfig::text(long number, std::initializer_list<std::string_view> values) const {
  const std::string text = this->text(number);
  std::string filled;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto place = at + 1 < text.size() ? static_cast<std::size_t>(text[at + 1] - '1') : values.size();
    if (text[at] != '%' || place >= values.size()) {
      filled += text[at];
      continue;
    }
    filled += values.begin()[place];
    ++at;
  }
  return filled;
}

}  // namespace wizard
