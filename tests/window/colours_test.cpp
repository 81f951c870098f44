// The colours of the window: text stands out from its background in every scheme, and the scheme is the user's.
#include "wizard/win32/colours.h"

#include <array>
#include <cmath>

#include "tests/window/driver/window_picture.h"
#include "tests/window/window_test.h"

namespace window_driver {
namespace {

using wizard::win32::Colour;
using wizard::win32::ColourPair;
using wizard::win32::Scheme;

double luminance(COLORREF colour) {
  const auto linear = [](int channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(GetRValue(colour)) + 0.7152 * linear(GetGValue(colour)) + 0.0722 * linear(GetBValue(colour));
}

/// From 1 (the same) to 21 (black on white).
double contrast(COLORREF left, COLORREF right) {
  const double first = luminance(left), second = luminance(right);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

template <typename ColourOf>
void expect_contrast(ColourOf colour_of, std::string_view scheme) {
  for (const ColourPair& pair : wizard::win32::colour_pairs()) {
    EXPECT_GE(contrast(colour_of(pair.above), colour_of(pair.ground)), pair.is_text ? 4.5 : 3.0)
        << scheme << ": " << static_cast<int>(pair.above) << " on " << static_cast<int>(pair.ground);
  }
}

/// The high contrast that Windows ships: a colour for each number of the system's.
struct ContrastTheme {
  std::string_view name;
  COLORREF window, window_text, gray_text, highlight, highlight_text, button, button_text;

  COLORREF of(int system) const {
    switch (system) {
      case COLOR_WINDOW:
        return window;
      case COLOR_GRAYTEXT:
        return gray_text;
      case COLOR_HIGHLIGHT:
        return highlight;
      case COLOR_HIGHLIGHTTEXT:
        return highlight_text;
      case COLOR_BTNFACE:
        return button;
      case COLOR_BTNTEXT:
        return button_text;
      case COLOR_WINDOWTEXT:
        return window_text;
      default:
        throw std::runtime_error("a colour of which Windows promises nothing");
    }
  }
};

constexpr COLORREF black = RGB(0, 0, 0), white = RGB(255, 255, 255);
constexpr ContrastTheme contrast_themes[] = {
    {"black", black, white, RGB(63, 242, 63), RGB(26, 235, 255), black, black, white},
    {"white", white, black, RGB(96, 0, 0), RGB(55, 0, 110), white, white, black},
};

TEST(Colours, EveryTextStandsOutFromItsGroundInEveryScheme) {
  for (const auto& [scheme, name] : {std::pair{Scheme::Light, "light"}, {Scheme::Dark, "dark"}})
    expect_contrast([&](Colour which) { return wizard::win32::colour_in(scheme, which); }, name);
  for (const ContrastTheme& theme : contrast_themes)
    expect_contrast([&](Colour which) { return theme.of(wizard::win32::system_colour(which)); }, theme.name);
}

/// Sets the user's choice between light and dark programs, and restores it at the end.
class AppsUseLightTheme {
 public:
  explicit AppsUseLightTheme(DWORD light) { set(light); }
  ~AppsUseLightTheme() { RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"AppsUseLightTheme"); }
  AppsUseLightTheme(const AppsUseLightTheme&) = delete;
  AppsUseLightTheme& operator=(const AppsUseLightTheme&) = delete;
  static void set(DWORD light) {
    RegSetKeyValueW(HKEY_CURRENT_USER, key, L"AppsUseLightTheme", REG_DWORD, &light, sizeof light);
  }

 private:
  static constexpr wchar_t key[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
};

class ColoursTest : public WindowTest {
 protected:
  /// The colour that most of the window has.
  static COLORREF ground_of(HWND window) {
    COLORREF most = CLR_INVALID;
    std::size_t seen = 0;
    for (const auto& [colour, count] : colours_of(window)) {
      if (count > seen) most = colour, seen = count;
    }
    return most;
  }
  bool page_becomes(Scheme scheme) {
    return wait_until(
        [&] { return ground_of(wizard().control("lblPurpose(3)")) == wizard::win32::colour_in(scheme, Colour::Page); });
  }
  /// Names the controls whose background is not one of the scheme's, or on which nothing can be read.
  std::string not_in(Scheme scheme);
};

bool is_drawn_in_colours(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Label:
    case form::Kind::Button:
    case form::Kind::OptionButton:
    case form::Kind::TextBox:
    case form::Kind::ComboBox:
      return true;
    default:
      return false;
  }
}

std::string ColoursTest::not_in(Scheme scheme) {
  constexpr std::array grounds{Colour::Page, Colour::Bar, Colour::Field, Colour::Button};
  std::string wrong;
  for (const form::Control* control : wizard().seen()) {
    if (!is_drawn_in_colours(*control)) continue;
    const auto colours = colours_of(wizard().control(control->path()));
    const bool empty = control->kind() != form::Kind::Button && wizard().text(control->path()).empty();
    // A label without a text takes no place.
    if (empty && colours.empty()) continue;
    const COLORREF ground = ground_of(wizard().control(control->path()));
    const bool known =
        std::ranges::any_of(grounds, [&](Colour which) { return wizard::win32::colour_in(scheme, which) == ground; });
    const bool read =
        empty || std::ranges::any_of(colours, [&](const auto& entry) { return contrast(entry.first, ground) >= 4.5; });
    if (!known || !read) wrong += control->path() + " ";
  }
  return wrong;
}

TEST_F(ColoursTest, EveryControlOfEveryPageIsDark) {
  demo_.set_ini("pelmar.ini", "setup", "display",
                "INtro|netpath|Maßeinheit|Patdat|Insulin|Medikamente|Therapie_bz|pics|eingabe|Schema|sidebar|Fertig");
  const AppsUseLightTheme dark(0);
  start();
  for (;;) {
    const std::string page = wizard().page();
    if (page == "PatDat") enter_patient();
    EXPECT_EQ(not_in(Scheme::Dark), "") << page;
    if (page == "Fertig") break;
    wizard().next();
  }
}

TEST_F(ColoursTest, ADarkListShowsItsSelectionInTheSchemesColours) {
  const AppsUseLightTheme dark(0);
  start();
  enter_patient();
  SendMessageW(wizard().control("cbTherapie"), CB_SHOWDROPDOWN, TRUE, 0);
  HWND list = nullptr;
  ASSERT_TRUE(wait_until([&] { return (list = wizard().process().find_window(L"ComboLBox")) != nullptr; }));
  for (const int chosen : {0, 2}) {
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    EXPECT_TRUE(wait_until([&] {
      const auto colours = colours_of(list);
      const auto shows = [&](Colour which) { return colours.contains(wizard::win32::colour_in(Scheme::Dark, which)); };
      return shows(Colour::Choice) && shows(Colour::Field) && shows(Colour::FieldText) &&
             !colours.contains(GetSysColor(COLOR_HIGHLIGHT));
    })) << chosen;
  }
}

TEST_F(ColoursTest, TheWindowFollowsTheUsersChoiceWhileItIsOpenAndKeepsWhatIsTyped) {
  const AppsUseLightTheme theme(1);
  start();
  enter_patient();
  EXPECT_TRUE(page_becomes(Scheme::Light));
  for (const DWORD light : {0u, 1u}) {
    AppsUseLightTheme::set(light);
    SendMessageW(wizard().window(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
    const Scheme scheme = light != 0 ? Scheme::Light : Scheme::Dark;
    EXPECT_TRUE(page_becomes(scheme));
    EXPECT_TRUE(wait_until([&] { return not_in(scheme).empty(); })) << not_in(scheme);
    EXPECT_EQ(wizard().text("txtFirstName") + " " + wizard().text("txtName"), "Jörg Müller");
    EXPECT_EQ(wizard().focus(), "txtFirstName");
  }
}

}  // namespace
}  // namespace window_driver
