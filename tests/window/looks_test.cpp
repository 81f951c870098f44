// What every page looks like, whatever the font, the resolution and the language: nothing cut, everything named.
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "support/encoding.h"
#include "support/host.h"
#include "tests/window/driver/control_look.h"
#include "tests/window/window_test.h"
#include "wizard/win32/com.h"

namespace window_driver {
namespace {

constexpr std::string_view every_page =
    "INtro|netpath|Maßeinheit|Patdat|Insulin|Medikamente|Therapie_bz|Therapie_bp|pics|eingabe|Darstellung|Schema|"
    "sidebar|start|tip_navbar|tip_splits|tip_stats|Fertig";

/// The resolution that programs started from now on find, until it is put back.
class Resolution {
 public:
  explicit Resolution(DWORD dpi) { set(dpi); }
  ~Resolution() { set(USER_DEFAULT_SCREEN_DPI); }
  Resolution(const Resolution&) = delete;
  Resolution& operator=(const Resolution&) = delete;

 private:
  static void set(DWORD dpi) {
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels", REG_DWORD, &dpi, sizeof dpi);
  }
};

class LooksTest : public WindowTest {
 protected:
  LooksTest() { demo_.set_ini("pelmar.ini", "setup", "display", every_page); }

  /// Calls `look` with every control that is seen, on every page.
  template <typename Look>
  void walk(Look look, std::string_view command_line = "vantrix") {
    start(command_line);
    for (;;) {
      for (const form::Control* control : wizard().seen()) look(*control);
      const std::string page = wizard().page();
      if (page == "Fertig") break;
      if (page == "PatDat") enter_patient();
      wizard().next();
    }
  }

  std::string cut_texts(const std::string& font, std::string_view command_line = "vantrix") {
    std::string cut;
    walk([&](const form::Control& control) { cut += cut_text(wizard(), control, font); }, command_line);
    return cut;
  }

  /// Makes the texts of the installation 40 % longer.
  void lengthen_texts() const;
};

/// A caption of 40 % more characters: its own once more, without what has a meaning.
std::string longer(const std::string& text) {
  const std::size_t tooltip = std::min(text.find('|'), text.size());
  std::string caption = text.substr(0, tooltip), plain = std::regex_replace(caption, std::regex("[&%\\\\][1-9n]?"), "");
  const std::size_t more = (support::character_count(plain) * 2 + 4) / 5;
  return caption + " " + std::string(support::first_characters(plain, more)) + text.substr(tooltip);
}

void LooksTest::lengthen_texts() const {
  const std::string file = demo_.path("texts\\de.ini");
  std::istringstream lines(support::host_file_system().read(file, 1 << 20).value_or(""));
  std::string table, line;
  while (std::getline(lines, line)) {
    const std::size_t equals = line.find('=');
    const bool has_text = equals != std::string::npos && line[0] != ';';
    table += (has_text ? line.substr(0, equals + 1) + longer(line.substr(equals + 1)) : line) + "\n";
  }
  std::ofstream(std::filesystem::path(support::utf16_from_utf8(file)), std::ios::binary) << table;
}

TEST_F(LooksTest, NoTextIsCutAtAnyResolution) {
  for (const DWORD dpi : {96u, 144u, 192u}) {
    const Resolution resolution(dpi);
    EXPECT_EQ(cut_texts("Tahoma"), "") << dpi;
    EXPECT_EQ(wizard().resolution(), dpi);
  }
}

TEST_F(LooksTest, NoTextIsCutWhereTextsAreFortyPerCentLonger) {
  lengthen_texts();
  EXPECT_EQ(cut_texts("Tahoma"), "");
  EXPECT_THAT(wizard().text("Command1(2)"), ::testing::StartsWith("Abbrechen Abbr"));
}

TEST_F(LooksTest, NoTextIsCutInTheProfessionalEdition) {
  EXPECT_EQ(cut_texts("Tahoma", "vantrix Pro"), "");
  lengthen_texts();
  EXPECT_EQ(cut_texts("Tahoma", "vantrix Pro"), "");
}

TEST_F(LooksTest, AFontThatDoesNotExistIsReplaced) {
  demo_.set_ini("setup.ini", "setup", "font", "Diese Schrift gibt es nicht");
  EXPECT_EQ(cut_texts("Diese Schrift gibt es nicht"), "");
}

TEST_F(LooksTest, AScreenReaderHasANameForEveryControl) {
  const wizard::win32::ComSession com;
  std::string unnamed;
  walk([&](const form::Control& control) {
    // A page is what lies on it, and a label without a text is none.
    const bool is_name_itself = control.kind() == form::Kind::Frame || control.kind() == form::Kind::Label;
    if (!is_name_itself && accessible_name(wizard().control(control.path())).empty()) unnamed += control.path() + " ";
  });
  EXPECT_EQ(unnamed, "");
}

}  // namespace
}  // namespace window_driver
