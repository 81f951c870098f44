// The text tables of the source tree, by number.
#pragma once

#include <charconv>
#include <map>
#include <string>

#include "support/file_system.h"
#include "support/ini_document.h"

namespace content {

inline std::string source_text(const std::string& path) {
  const support::FileSystem& files = support::host_file_system();
  return files.read(files.windows_path(SOURCE_DIR + std::string("/") + path), 4 << 20).value_or("");
}

using Texts = std::map<long, std::string>;

/// Every row of texts/<language>.ini as written, in the order of the numbers. A key that is no number gets number -1.
inline Texts texts(const std::string& language) {
  const std::string bytes = source_text("texts/" + language + ".ini");
  Texts result;
  support::IniDocument::parse(bytes, support::IniDocument::Encoding::Utf8)
      .each_value("texts", [&result](std::string_view key, std::string_view text) {
        long number = -1;
        std::from_chars(key.data(), key.data() + key.size(), number);
        result.emplace(number, text);
      });
  return result;
}

}  // namespace content
