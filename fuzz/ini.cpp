// Any bytes as an ini file: reading never fails, and what is written back reads the same.
#include "fuzz/target.h"
#include "support/ini_document.h"

namespace {

using support::IniDocument;

std::string told(const IniDocument& document) {
  std::string text;
  for (const std::string_view section : document.sections()) {
    text.append("[").append(section).append("]\n");
    document.each_value(section, [&text](std::string_view key, std::string_view value) {
      text.append(key).append("=").append(value).append("\n");
    });
  }
  return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::text_of(data, size);
  for (const auto encoding : {IniDocument::Encoding::Cp1252, IniDocument::Encoding::Utf8}) {
    IniDocument document = IniDocument::parse(bytes, encoding);
    const bool text = document.is_text();
    if (text) {
      const IniDocument again = IniDocument::parse(document.bytes(), encoding);
      fuzz::promise(IniDocument::parse(again.bytes(), encoding).bytes() == again.bytes(), "a written file is stable");
    }
    static_cast<void>(told(document));
    document.set("setup", "journal", "value");
    fuzz::promise(document.value("setup", "journal") == "value", "a value that was set is there");
  }
  return 0;
}
