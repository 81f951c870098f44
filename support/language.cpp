#include "support/language.h"

#include <map>
#include <utility>

#include "support/encoding.h"
#include "support/file_system.h"
#include "support/ini_document.h"
#include "support/text.h"

namespace support {

namespace {

constexpr std::string_view class_ending = ".LanguageDLL";
constexpr std::string_view default_name = "de";
constexpr std::string_view text_section = "texts";

using Texts = std::map<long, std::string>;

class TextTable final : public LanguageComponent {
 public:
  explicit TextTable(Texts texts) : texts_(std::move(texts)) {}

  std::string loadres(long number) const override {
    const auto found = texts_.find(number);
    return found == texts_.end() ? std::string() : found->second;
  }

 private:
  Texts texts_;
};

/// A name that stays within the folder of the tables.
bool is_plain_name(std::string_view name) { return name.find_first_of("\\/:.") == std::string_view::npos; }

std::string with_line_breaks(std::string_view text) {
  constexpr std::string_view text_mark = "\\n";
  std::string result;
  for (auto mark = text.find(text_mark); mark != std::string_view::npos; mark = text.find(text_mark)) {
    result.append(text.substr(0, mark)).append("\r\n");
    text.remove_prefix(mark + text_mark.size());
  }
  return result.append(text);
}

Texts texts_of(std::string_view bytes) {
  const auto encoding = is_utf8(bytes) ? IniDocument::Encoding::Utf8 : IniDocument::Encoding::Cp1252;
  const IniDocument table = IniDocument::parse(bytes, encoding);
  Texts texts;
  table.each_value(text_section, [&texts](std::string_view key, std::string_view text) {
    if (const auto number = parse_whole<long>(key)) texts.try_emplace(*number, with_line_breaks(text));
  });
  return texts;
}

}  // namespace

std::unique_ptr<LanguageComponent> open_text_table(std::string_view folder, std::string_view name) {
  if (name.empty()) name = default_name;
  if (!is_plain_name(name)) return nullptr;
  const std::string file = std::string(folder) + "\\texts\\" + std::string(name) + ".ini";
  const auto bytes = host_file_system().read(file, most_ini_bytes);
  Texts texts = bytes ? texts_of(*bytes) : Texts();
  if (texts.empty()) return nullptr;
  return std::make_unique<TextTable>(std::move(texts));
}

const LanguageComponent& german_texts() {
  static const TextTable texts(texts_of(german_table));
  return texts;
}

std::unique_ptr<LanguageComponent> create_language(std::string_view class_name, std::string_view folder) {
  if (auto component = create_installed_language(class_name)) return component;
  if (class_name.ends_with(class_ending)) class_name.remove_suffix(class_ending.size());
  return open_text_table(folder, class_name);
}

}  // namespace support
