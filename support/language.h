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

/// The text table `<folder>\texts\<name>.ini` (section "texts", number=text, UTF-8; "\n" stands for a line break),
/// where `folder` is a Windows path. An empty name is "de". Null where the file is missing, is larger than 4 MiB or
/// holds no text, or where the name would lead out of the folder.
std::unique_ptr<LanguageComponent> open_text_table(std::string_view folder, std::string_view name);

/// The content of "texts/de.ini", which is built into every program.
extern const std::string_view german_table;

/// The German texts that every program carries, for where nothing else has a text.
const LanguageComponent& german_texts();

/// The component of a class name: the one installed on this machine, else the text table named by the class name
/// without its ending ".LanguageDLL". Null where there is neither.
std::unique_ptr<LanguageComponent> create_language(std::string_view class_name, std::string_view folder);

/// The component that is installed under the class name (on Windows a COM class). Null where there is none.
std::unique_ptr<LanguageComponent> create_installed_language(std::string_view class_name);

}  // namespace support
