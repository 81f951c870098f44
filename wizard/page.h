// A page of the wizard as a row: what it shows, how it is filled, what it checks and what it says on the last page. The
// rest of the wizard walks the list of these rows (page_list.h) and knows no page by name.
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

/// The picture beside the page, by the number of its resource.
enum class Illustration : std::uint8_t { Insulin = 101, Medicines = 102, Therapy = 103, Unit = 104, Other = 105 };

/// The editions whose default list of steps has the page. A page of neither edition is shown if the installation's own
/// list names it.
enum class Edition : std::uint8_t { None = 0, Standard = 1, Professional = 2, Both = 3 };

/// Pictures that a control shows.
struct PagePicture {
  std::string_view control;
  int count = 0;  ///< members of the array, whose member n shows resource + n; 0: no array
  std::string_view resource;
};

/// How many characters a user may type into a control, or into each member of an array: as many as the column behind it
/// holds.
struct TextLimit {
  std::string_view control;
  int characters = 0;
};

/// What happens after a control of the page was clicked, was changed or got the focus. `index` is the control's.
struct PageEvent {
  std::string_view control;
  void (*handle)(Context& context, Pages& pages, int index);
};

/// What moves while the page is shown.
struct Animation {
  int interval = 0;  ///< milliseconds; 0: nothing moves
  void (*tick)(Context& context) = nullptr;
};

/// A line of the column beside a page's area: the names of a label and a control. Either may be missing.
struct BesideRow {
  std::string_view label, control;
};

/// As the index in a row of controls, this means the index of the page.
inline constexpr int of_page = -2;

/// Members that a page does not need are left out.
struct Page {
  std::string_view tag;
  std::string_view step = {};  ///< its name in the default lists, if that is spelled differently
  Edition shown_in = Edition::None;
  /// True if the page's values go into the patient's database, which the professional edition does not write.
  bool patients_own = false;
  /// The heading `lblHeading`, the sentence `lblPurpose` and all other controls. A control without a container lies on
  /// the page.
  std::span<const form::ControlRow> controls = {};
  /// The controls beside the page's area; below it, if there is no room beside it.
  std::span<const BesideRow> beside = {};
  Illustration illustration = Illustration::Other;
  long why = 0;  ///< number of the text that the button `cmdWhy` shows; 0: the page has no such button
  std::span<const PagePicture> pictures = {};
  std::span<const TextLimit> limits = {};
  std::span<const OptionGroup> options = {};
  std::span<const PageEvent> clicks = {}, changes = {}, focuses = {};
  Animation animation = {};
  /// Fills the page before the first page is shown; its options are already chosen.
  void (*preset)(Context& context, Pages& pages, const Stored& stored) = nullptr;
  /// Is called before the page is shown.
  void (*enter)(Context& context, Pages& pages) = nullptr;
  /// False if the page may not be left yet; the user has then been told why.
  bool (*leave)(Context& context, Pages& pages) = nullptr;
  /// Puts the page's values, except its options, over what is stored.
  void (*gather)(const Context& context, const Pages& pages, Choices& choices) = nullptr;
  /// The page's lines on the last page. They read the record and, for captions, the form.
  std::vector<std::string> (*summary)(const Context& context, const Choices& choices) = nullptr;
  /// Findings about the page, except full fields. The caller fills in the page of each finding.
  void (*findings)(const Context& context, const Pages& pages, const Choices& choices, Findings& findings) = nullptr;
};

}  // namespace wizard
