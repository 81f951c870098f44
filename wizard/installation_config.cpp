#include "wizard/installation_config.h"

#include <span>

namespace wizard {

namespace {

std::string with_values(std::string_view text, std::span<const std::string_view> values) {
  std::string filled;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto place = at + 1 < text.size() ? static_cast<std::size_t>(text[at + 1] - '1') : values.size();
    if (text[at] != '%' || place >= values.size()) {
      filled += text[at];
      continue;
    }
    filled += values[place];
    ++at;
  }
  return filled;
}

}  // namespace

std::string InstallationConfig::text(long number) const {
  const std::string text = LanguageObject ? LanguageObject->loadres(number) : std::string();
  return text.empty() ? support::german_texts().loadres(number) : text;
}

std::string InstallationConfig::text(long number, std::initializer_list<std::string_view> values) const {
  return with_values(text(number), std::span(values.begin(), values.size()));
}

std::string InstallationConfig::text(long number, const std::vector<std::string>& values) const {
  return with_values(text(number), std::vector<std::string_view>(values.begin(), values.end()));
}

}  // namespace wizard
