#include "wizard/chart_catalogue.h"

#include <charconv>

#include "support/text.h"
#include "support/windows_path.h"

namespace wizard {

namespace {

constexpr std::string_view catalogue_section = "CHARTS";

long text_number(const std::vector<std::string>& fields, std::size_t field) {
  long number = -1;
  if (field < fields.size()) {
    const std::string text = support::trim(fields[field]);
    std::from_chars(text.data(), text.data() + text.size(), number);
  }
  return number;
}

}  // namespace

std::vector<std::string> ChartCatalogue::keys() const {
  std::vector<std::string> keys;
  support::Split(support::ReadIni(*context_.ports.ini, *context_.ports.registry, context_.config.RegKey,
                                  {.section = catalogue_section, .key = "KEYS", .file = file(), .delimiter = "|"}),
                 keys, "|");
  return keys;
}

ChartCatalogue::Texts ChartCatalogue::texts(std::string_view key) const {
  std::vector<std::string> fields;
  support::Split(context_.ini_value(file(), catalogue_section, key), fields, "^");
  const auto text = [&](std::size_t field) {
    const long number = text_number(fields, field);
    return number < 0 ? std::string() : context_.config.text(number);
  };
  return {text(0), text(1)};
}

std::string ChartCatalogue::picture_file(std::string_view prefix, std::string_view key) const {
  if (key.find_first_of("\\/:") != std::string_view::npos) return {};
  return support::join_path(support::join_path(context_.config.own_folder, "pics"),
                            std::string(prefix) + std::string(key) + ".jpg");
}

}  // namespace wizard
