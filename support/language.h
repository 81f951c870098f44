// The language component: numbered texts. Every text for the user is read from it at the moment when it is shown.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace support {

class LanguageComponent {
 public:
  virtual ~LanguageComponent() = default;
  /// The text with this number; empty if there is none. The caller fills in "%1" and the like. A text may consist of a
  /// caption and a tooltip, separated by "|". Line breaks are CR LF.
  virtual std::string loadres(long number) const = 0;
};

/// The text table `<folder>\texts\<name>.ini` (section "texts", number=text, UTF-8, "\n" for a line break). `folder` is
/// a Windows path; an empty name means "de". Null if the file is missing, is larger than 4 MiB or holds no text, or if
/// the name would lead out of the folder.
std::unique_ptr<LanguageComponent> open_text_table(std::string_view folder, std::string_view name);

/// The content of "texts/de.ini", which is built into every program.
extern const std::string_view german_table;

/// The German texts of this table, for when nothing else has a text.
const LanguageComponent& german_texts();

/// The component of a class name: the one that is installed on this machine, else the text table whose name is the
/// class name without its ending ".LanguageDLL". Null if there is neither.
std::unique_ptr<LanguageComponent> create_language(std::string_view class_name, std::string_view folder);

/// The component that is installed under the class name (on Windows a COM class). Null if there is none.
std::unique_ptr<LanguageComponent> create_installed_language(std::string_view class_name);

}  // namespace support
