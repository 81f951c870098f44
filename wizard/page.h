// A page of the wizard as a row: what it shows, how it is filled, what it checks and what it says on the last page. The
// rest of the wizard walks the list of the rows (page_list.h) and knows no page by its name.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/context.h"
#include "wizard/finding.h"
#include "wizard/form/form.h"
#include "wizard/option_groups.h"

namespace wizard {

struct Choices;
struct Pages;
struct Stored;

/// Resources of the picture beside the pages.
enum class Illustration : std::uint8_t { Insulin = 101, Medicines = 102, Therapy = 103, Unit = 104, Other = 105 };

/// Whose default list of steps has the page. A page of neither is shown where the installation's own list names it.
enum class Edition : std::uint8_t { None = 0, Standard = 1, Professional = 2, Both = 3 };

/// Pictures that a control shows.
struct PagePicture {
  std::string_view control;
  int count = 0;  ///< members of the array, whose member n shows resource + n; 0: no array
  std::string_view resource;
};

/// How much a user can type into a control, or into each member of an array: what the column behind it holds.
struct TextLimit {
  std::string_view control;
  int characters = 0;
};

/// What happens after a control of the page was clicked, was changed or has got the focus; `index` is that of the
/// control.
struct PageEvent {
  std::string_view control;
  void (*handle)(Context& context, Pages& pages, int index);
};

/// What moves while the page is shown.
struct Animation {
  int interval = 0;  ///< milliseconds; 0: nothing moves
  void (*tick)(Context& context) = nullptr;
};

/// A line of the column beside a page's area: names of a label and a control, each of which may be left out.
struct BesideRow {
  std::string_view label, control;
};

/// Index in a row of controls: that of the page.
inline constexpr int of_page = -2;

/// A page that has nothing to say leaves a member out.
struct Page {
  std::string_view tag;
  std::string_view step = {};  ///< its name in the default lists, where that is spelled in another way
  Edition shown_in = Edition::None;
  /// What it holds goes into the patient's database, which the professional edition does not write.
  bool patients_own = false;
  /// Its heading `lblHeading`, the sentence `lblPurpose` and all else; a control without a container lies on the page.
  std::span<const form::ControlRow> controls = {};
  /// What stands beside the area that the page has, where there is room for that, and else below it.
  std::span<const BesideRow> beside = {};
  Illustration illustration = Illustration::Other;
  long why = 0;  ///< number of the text that the button `cmdWhy` shows; 0: the page has no such button
  std::span<const PagePicture> pictures = {};
  std::span<const TextLimit> limits = {};
  std::span<const OptionGroup> options = {};
  std::span<const PageEvent> clicks = {}, changes = {}, focuses = {};
  Animation animation = {};
  /// Fills the page before the first one is shown; its options are chosen already.
  void (*preset)(Context& context, Pages& pages, const Stored& stored) = nullptr;
  /// Before the page is shown.
  void (*enter)(Context& context, Pages& pages) = nullptr;
  /// False, after saying why, where the page may not be left yet.
  bool (*leave)(Context& context, Pages& pages) = nullptr;
  /// Puts what the page holds, beside its options, over what is stored.
  void (*gather)(const Context& context, const Pages& pages, Choices& choices) = nullptr;
  /// Lines of the last page; they read the record and, for captions, the form.
  std::vector<std::string> (*summary)(const Context& context, const Choices& choices) = nullptr;
  /// What is worth a word about the page, beside fields that are full; the page of a finding is filled in later.
  void (*findings)(const Context& context, const Pages& pages, const Choices& choices, Findings& findings) = nullptr;
};

}  // namespace wizard
