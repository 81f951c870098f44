// The form as data: what its controls tell the observer, how they get their texts, and the places of the layout.
#include "wizard/form/form.h"

#include <gmock/gmock.h>

#include <map>
#include <string>

#include "support/error.h"
#include "wizard/form/apply_texts.h"
#include "wizard/form_layout.h"
#include "wizard/page_lines.h"
#include "wizard/page_list.h"

namespace {

using form::Control;
using form::Form;
using form::Kind;
using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Recorder : public form::FormObserver {
 public:
  void property_changed(const Control& control, form::Property) override { seen.push_back(control.path()); }
  void control_added(const Control& control) override { seen.push_back("+" + control.path()); }
  void focus_requested(const Control& control) override { seen.push_back("focus " + control.path()); }
  void redraw_requested(const Control&) override {}
  std::vector<std::string> seen;
};

TEST(AForm, TellsOfRealChangesOnly) {
  Form form;
  Recorder recorder;
  form.set_observer(&recorder);
  Control& box = form.add({"txtName", -1, Kind::TextBox});
  box.set_text("a");
  box.set_text("a");
  form.request_focus(box);
  EXPECT_THAT(recorder.seen, ElementsAre("+txtName", "txtName", "focus txtName"));
  EXPECT_EQ(form.focus(), &box);
}

TEST(AForm, ChoosesOneOptionOfAnArray) {
  Form form;
  for (int n = 0; n < 3; ++n) form.add({"opt", n, Kind::OptionButton});
  form.at("opt", 0).set_value(1);
  Recorder recorder;
  form.set_observer(&recorder);
  form.at("OPT", 2).set_value(1);
  EXPECT_THAT(recorder.seen, ElementsAre("opt(0)", "opt(2)"));
}

TEST(AForm, FindsControlsByPathAndRefusesUnknownOnes) {
  Form form;
  form.add({"frame", 3, Kind::Frame});
  form.add({"box", -1, Kind::TextBox, "frame(3)"});
  EXPECT_EQ(form.find_path("box")->parent(), form.find_path("FRAME(3)"));
  for (const char* path : {"frame", "frame(2)", "frame(3", "frame(x)", "frame(3) ", "", "("})
    EXPECT_EQ(form.find_path(path), nullptr) << path;
  EXPECT_THROW(form.at("frame", 2), support::RuntimeError);
  EXPECT_THROW(form.add({"box"}), support::RuntimeError);
  EXPECT_THROW(form.add({"other", -1, Kind::Label, "frame(2)"}), support::RuntimeError);
}

TEST(AComboBox, KeepsTextAndSelectionTogether) {
  Form form;
  Control& box = form.add({"cb", -1, Kind::ComboBox});
  box.set_items({{"a", 7}, {"b", 8}, {"b", 9}});
  box.set_list_index(2);
  EXPECT_EQ(box.text(), "b");
  EXPECT_EQ(box.selected_item_data(), 9);
  box.set_text("a");
  EXPECT_EQ(box.selected_item_data(), 7);
  box.set_text("free");
  EXPECT_EQ(box.list_index(), -1);
  box.set_list_index(3);
  EXPECT_EQ(box.text(), "");
  EXPECT_EQ(box.selected_item_data(), 0);
}

TEST(MatchList, PrefersItemDataThenTextThenFreeText) {
  struct Case {
    const char* value;
    bool editable;
    int index;
    const char* text;
  };
  for (const Case& row : {Case{"8", false, 1, "b"}, Case{"B", false, 1, "b"}, Case{"7", false, 2, "7"},
                          Case{"x", false, -1, ""}, Case{"x", true, -1, "x"}, Case{"", false, -1, ""}}) {
    Form form;
    Control& box = form.add({.name = "cb", .kind = Kind::ComboBox, .editable = row.editable});
    box.set_items({{"a", 1}, {"b", 8}, {"7", 3}});
    form::MatchList(box, row.value);
    EXPECT_EQ(box.list_index(), row.index) << row.value;
    EXPECT_EQ(box.text(), row.text) << row.value;
    EXPECT_TRUE(box.enabled());
  }
  Form form;
  Control& empty = form.add({"cb", -1, Kind::ComboBox});
  form::MatchList(empty, "1");
  EXPECT_FALSE(empty.enabled());
}

class Numbers : public support::LanguageComponent {
 public:
  std::string loadres(long number) const override {
    switch (number) {
      case 1:
        return "Wort|Ein Satz.";
      case 2:
        return "Wort";
      case 3:
        return "|Ein Satz.";
      default:
        return "";
    }
  }
};

TEST(ApplyTexts, FollowsTheTagByKindOfControl) {
  struct Case {
    const char* tag;
    Kind kind;
    const char* caption;
    const char* tooltip;
  };
  const Numbers numbers;
  for (const Case& row : {Case{"L1", Kind::Button, "Wort", "Ein Satz."}, Case{"L2^mehr", Kind::Button, "Wort", ""},
                          Case{"L3", Kind::Button, "Entwurf", "Ein Satz."}, Case{"L9", Kind::Button, "Entwurf", ""},
                          Case{"L1", Kind::Label, "Wort|Ein Satz.", ""}, Case{"L9", Kind::Label, "", ""},
                          Case{"einheit", Kind::Frame, "Entwurf", ""}, Case{"L", Kind::Label, "Entwurf", ""},
                          Case{"L2x", Kind::Label, "Entwurf", ""}, Case{"L2", Kind::TextBox, "Entwurf", ""}}) {
    Form form;
    Control& control = form.add({.name = "c", .kind = row.kind, .caption = "Entwurf", .tag = row.tag});
    std::string font = "Tahoma";
    form::apply_texts(form, &numbers, font);
    EXPECT_EQ(control.caption(), row.caption) << row.tag;
    EXPECT_EQ(control.tooltip(), row.tooltip) << row.tag;
    EXPECT_EQ(control.font(), "Tahoma");
  }
}

TEST(ApplyTexts, RecordsArialWhereNoFontIsConfiguredAndKeepsCaptionsWithoutLanguage) {
  Form form;
  form.set_caption("Entwurf");
  form.set_tag("L2");
  Control& label = form.add({.name = "c", .caption = "Entwurf", .tag = "L2"});
  label.set_font("Courier");
  std::string font;
  form::apply_texts(form, nullptr, font);
  EXPECT_EQ(font, "Arial");
  EXPECT_EQ(label.font(), "Courier");
  EXPECT_EQ(label.caption(), "Entwurf");
  const Numbers numbers;
  form::apply_texts(form, &numbers, font);
  EXPECT_EQ(form.caption(), "Wort");
}

form::Bounds absolute(const Control& control) {
  form::Bounds bounds = control.bounds();
  for (const Control* parent = control.parent(); parent; parent = parent->parent()) {
    bounds.left += parent->bounds().left;
    bounds.top += parent->bounds().top;
  }
  return bounds;
}

bool overlap(const form::Bounds& a, const form::Bounds& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height && b.top < a.top + a.height;
}

TEST(TheLayout, KeepsEveryControlInsideItsContainer) {
  Form form;
  wizard::build_form(form);
  for (const auto& control : form.controls()) {
    const form::Bounds& outer = control->parent() ? control->parent()->bounds() : wizard::form_bounds;
    const form::Bounds& inner = control->bounds();
    EXPECT_TRUE(inner.left >= 0 && inner.top >= 0 && inner.left + inner.width <= outer.width &&
                inner.top + inner.height <= outer.height)
        << control->path();
  }
}

/// Pictures lie over each other on purpose, and all pages lie in one place.
TEST(TheLayout, LaysNoTwoControlsOverEachOther) {
  Form form;
  wizard::build_form(form);
  const auto counts = [](const Control& control) {
    return control.kind() != Kind::Image && control.kind() != Kind::Frame && control.kind() != Kind::PictureBox &&
           control.kind() != Kind::Timer;
  };
  const auto& controls = form.controls();
  for (std::size_t a = 0; a < controls.size(); ++a) {
    for (std::size_t b = a + 1; b < controls.size(); ++b) {
      if (controls[a]->parent() != controls[b]->parent() || !counts(*controls[a]) || !counts(*controls[b])) continue;
      EXPECT_FALSE(overlap(absolute(*controls[a]), absolute(*controls[b])))
          << controls[a]->path() << " and " << controls[b]->path();
    }
  }
}

TEST(TheLayout, HasAHeadingOfItsOwnAndASentenceOnEveryPage) {
  Form form;
  wizard::build_form(form);
  std::map<std::string, int> pages_by_heading;
  for (int n = 0; n < static_cast<int>(wizard::all_pages().size()); ++n) {
    const Control& page = form.at("contstep", n);
    const Control& heading = n == 0 ? form.at("Label2") : form.at("lblHeading", n);
    const Control& purpose = form.at("lblPurpose", n);
    EXPECT_EQ(heading.parent(), &page);
    EXPECT_EQ(purpose.parent(), &page);
    const auto [other, is_new] = pages_by_heading.try_emplace(heading.caption(), n);
    EXPECT_TRUE(is_new) << "pages " << other->second << " and " << n << " are both named " << heading.caption();
    EXPECT_THAT(heading.caption(), Not(IsEmpty())) << n;
    EXPECT_THAT(purpose.caption(), HasSubstr(" ")) << n;
    EXPECT_THAT(purpose.caption(), AnyOf(EndsWith("."), EndsWith("?"), EndsWith(":"))) << n;
  }
}

std::string name_of(const wizard::Cell& cell) {
  std::string text;
  for (const Control* control : {cell.label, cell.control, cell.unit})
    if (control != nullptr) text += (text.empty() ? "" : "+") + control->path();
  return text;
}

/// "a+b c / d": two cells on a line, one on the next. What lies inside a group or beside an area is in brackets.
std::string described(const std::vector<wizard::PageLine>& lines) {
  std::string text;
  for (const wizard::PageLine& line : lines) {
    if (!text.empty()) text += line.indented ? " > " : " / ";
    for (const wizard::Cell& cell : line.cells) text += (&cell == &line.cells.front() ? "" : " ") + name_of(cell);
    for (const auto* more : {&line.inner, &line.beside})
      if (!more->empty()) text += " [" + described(*more) + "]";
  }
  return text;
}

TEST(ThePage, HasLinesOfFieldsWithTheirLabelsAndUnits) {
  Form form;
  wizard::build_form(form);
  struct Case {
    const char *page, *lines;
  };
  for (const Case& row : {
           Case{"PatDat",
                "lblHeading(3) / lblPurpose(3) / lblFirstName+txtFirstName / lblName+txtName / lblStreet+txtStreet / "
                "lblZIP+txtZIP lblCity+txtCity / lblGender+optGender(0) optGender(1) / lblDiabetesTyp+cbDiabetesTyp / "
                "lblTherapie+cbTherapie / cmdWhy(3)"},
           Case{"Maßeinheit", "lblHeading(2) / lblPurpose(2) / fraUnit [optBGUnit(0) / optBGUnit(1)] / cmdWhy(2)"},
           Case{"netpath",
                "lblHeading(1) / lblPurpose(1) / lblFolderTitle+lblFolder > lblLocation / cmdPath(0) / cmdPath(1) / "
                "cmdWhy(1)"},
           Case{"Eingabe",
                "lblHeading(9) / lblPurpose(9) / optDataEntry(0) > lblDataEntry(0) / optDataEntry(1) > "
                "lblDataEntry(1) / optDataEntry(2) > lblDataEntry(2) / imgDataEntry"},
           Case{"tip_splits",
                "lblHeading(15)+cmdSkipTips(15) / lblPurpose(15) / imgSplitWindow(0) imgSplitWindow(1) "
                "imgSplitWindow(2) imgSplitBtn "
                "imgcursorHand2 / lblSplitDesc"},
           Case{"Pics",
                "lblHeading(8) / lblPurpose(8) / picFrame [lblPicsTitle+lblPics / lblChartLimit / lblChartInfoTitle / "
                "lblChartInfo / cmdViwPic]"},
           Case{"Fertig", "lblHeading(17)+imgOpen imgNew / lblPurpose(17) / lblSummary / lblChange+cbChange cmdChange"},
       }) {
    const Control& page = form.at("contstep", wizard::page_index(*wizard::find_page(row.page)));
    EXPECT_EQ(described(wizard::page_lines(form, page)), row.lines) << row.page;
  }
  const Control& targets = form.at("contstep", wizard::page_index(*wizard::find_page("Therapie_BZ")));
  EXPECT_EQ(name_of(wizard::page_lines(form, targets).at(2).cells.front()), "lblVorgabe(0)+txtvorgabe(0)+lblUnit(0)");
}

/// For every page, also one that is added later: each control that can be seen has a place in a line.
TEST(ThePage, HasEveryControlInALine) {
  Form form;
  wizard::build_form(form);
  for (const Control* page : form.array("contstep")) {
    const std::string lines = described(wizard::page_lines(form, *page));
    for (const auto& control : form.controls()) {
      const bool is_buffer = control->bounds().width < 60;
      if (control->parent() != page || is_buffer) continue;
      EXPECT_THAT(lines, HasSubstr(control->path()));
    }
  }
}

}  // namespace
