// The language component: numbered texts. Every text a user sees is fetched from it at the moment it is shown.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace support {

class LanguageComponent {
 public:
  virtual ~LanguageComponent() = default;
  /// The text for the number; empty for an unknown one. "%1" and the like are filled in by the caller. A text may hold
  /// a caption and a tooltip separated by "|". Line breaks are CR LF.
  virtual std::string loadres(long number) const = 0;
};

/// The text table `<folder>\texts\<name>.ini` (section "texts", number=text, UTF-8; "\n" stands for a line break).
/// An empty name is "de". Null where the file is missing or holds no text.
std::unique_ptr<LanguageComponent> open_text_table(std::string_view texts_folder, std::string_view name);

}  // namespace support
