// The form as data: an ordered list of controls. A window shows their properties, and the wizard handles their events.
// The form knows nothing about windows or diabetes. Names of controls are ASCII and are compared without regard to
// case; every other text is UTF-8. A form is used by one thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace form {

enum class Kind {
  Frame,
  Label,
  Button,
  OptionButton,  ///< one of a group: the members of its control array
  ChartOption,   ///< check-style option with a picture and a caption
  TextBox,       ///< `editable`: one line; otherwise read only, several lines, scrolled by the window
  ComboBox,      ///< drop-down list; if `editable`, any text can be typed, too
  Image,
  PictureBox,
  ScrollBar,
  ProgressBar,
  StepIndicator,  ///< the steps in order, the current one selected; the caption says the same in words
  Timer,
};

/// Position inside the parent, in twips (1/1440 inch; 15 to a pixel at 100 %).
struct Bounds {
  std::int32_t left = 0, top = 0, width = 0, height = 0;
  friend bool operator==(const Bounds&, const Bounds&) = default;
};

/// An entry of a combo box. The user sees its text; `item_data` is the number that it stands for.
struct ListItem {
  std::string text;
  std::int32_t item_data = 0;
  friend bool operator==(const ListItem&, const ListItem&) = default;
};

/// Colours of a progress bar: 0xBBGGRR.
struct Colours {
  std::uint32_t bar = 0, background = 0xFFFFFF;
  friend bool operator==(const Colours&, const Colours&) = default;
};

/// The properties of a control that may change while it exists.
enum class Property {
  Caption,
  ToolTip,
  Font,
  Text,
  Value,
  Visible,
  Enabled,
  Tag,
  Picture,
  Bounds,
  List,
  ListIndex,
  Maximum,
  Interval,
  Colours
};

/// A row of the table from which a form is built. If two controls overlap, the later one lies above.
struct ControlRow {
  std::string_view name;
  int index = -1;
  Kind kind = Kind::Label;
  std::string_view parent = {};  ///< path of the container; empty: the form
  Bounds bounds = {};
  std::string_view caption = {};
  std::string_view tag = {};
  bool visible = true;
  bool editable = false;
};

class Form;

/// One control, owned by its form. Every kind has every property; a window shows those that the kind uses.
///
/// A setter tells the form's observer if the value has changed, and raises no event. Unless said otherwise, it accepts
/// any value, also one beyond the maximum.
class Control {
 public:
  /// Made by Form::add().
  Control(Form& form, const ControlRow& row, Control* parent);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& name() const noexcept { return name_; }
  /// Index in its control array; -1 if it is in none.
  int index() const noexcept { return index_; }
  Kind kind() const noexcept { return kind_; }
  /// The container of the control; null if it lies on the form itself.
  Control* parent() const noexcept { return parent_; }
  /// "name" or "name(index)".
  std::string path() const;
  /// True if a user may type into it (text and combo boxes).
  bool editable() const noexcept { return editable_; }

  const std::string& tag() const noexcept { return tag_; }
  /// "&" marks the access key.
  const std::string& caption() const noexcept { return caption_; }
  const std::string& tooltip() const noexcept { return tooltip_; }
  /// Name of the font; empty: the system's own font.
  const std::string& font() const noexcept { return font_; }
  /// The text of text and combo boxes.
  const std::string& text() const noexcept { return text_; }
  /// For options: 1 chosen, 0 not. For scroll and progress bars: the position, from 0.
  int value() const noexcept { return value_; }
  /// For scroll and progress bars: the last position. For text and editable combo boxes: how many characters a user may
  /// type.
  int maximum() const noexcept { return maximum_; }
  /// The control's own flag, whether or not its container is visible.
  bool visible() const noexcept { return visible_; }
  bool enabled() const noexcept { return enabled_; }
  /// A timer's interval in milliseconds; 0: stopped.
  int interval() const noexcept { return interval_; }
  /// Name of a resource ("103", "diary") or path of a file; empty: none.
  const std::string& picture() const noexcept { return picture_; }
  const Bounds& bounds() const noexcept { return bounds_; }
  const std::vector<ListItem>& items() const noexcept { return items_; }
  /// Position of the selected entry in items(); -1 if none is selected.
  int list_index() const noexcept { return list_index_; }
  /// Item data of the selected entry; 0 if none is selected.
  std::int32_t selected_item_data() const noexcept;
  const Colours& colours() const noexcept { return colours_; }

  void set_tag(std::string_view tag);
  void set_caption(std::string_view caption);
  void set_tooltip(std::string_view tooltip);
  void set_font(std::string_view font);
  /// In a combo box this also selects the first entry with exactly this text, or none.
  void set_text(std::string_view text);
  /// A value other than 0 for an option button clears the other buttons of its control array.
  void set_value(int value);
  void set_maximum(int maximum);
  void set_visible(bool visible);
  void set_enabled(bool enabled);
  void set_interval(int milliseconds);
  void set_picture(std::string_view picture);
  void set_bounds(const Bounds& bounds);
  /// Also clears text and selection.
  void set_items(std::vector<ListItem> items);
  /// Also makes the entry's text the control's text. An index without an entry clears text and selection.
  void set_list_index(int list_index);
  void set_colours(const Colours& colours);

 private:
  template <typename Member, typename Value>
  void assign(Member& member, const Value& value, Property property);

  Form& form_;
  const std::string name_;
  const int index_;
  const Kind kind_;
  Control* const parent_;
  const bool editable_;
  std::string tag_, caption_, tooltip_, font_, text_, picture_;
  int value_ = 0, maximum_ = 100, interval_ = 0, list_index_ = -1;
  bool visible_, enabled_ = true;
  Bounds bounds_;
  Colours colours_;
  std::vector<ListItem> items_;
};

/// Tells the window what to show. Each call comes after a change, on the same thread, before the function that made the
/// change returns. Must not raise.
class FormObserver {
 public:
  virtual ~FormObserver() = default;
  /// Is called for each property whose value has changed.
  virtual void property_changed(const Control& control, Property property) = 0;
  /// The control is the last one in the form's order now. There are no calls for its initial properties.
  virtual void control_added(const Control& control) = 0;
  /// The control shall get the focus, whether or not it had it before.
  virtual void focus_requested(const Control& control) = 0;
  /// The control shall be drawn again with its contents, although no property has changed.
  virtual void redraw_requested(const Control& control) = 0;
};

/// Owns its controls. Their addresses stay valid as long as the form lives.
class Form {
 public:
  Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Adds a control at the end of the order. Raises 360 if name and index are taken, and 340 for an unknown container;
  /// the form is then unchanged.
  Control& add(const ControlRow& row);
  /// The control; raises 340 if there is none.
  Control& at(std::string_view name, int index = -1);
  const Control& at(std::string_view name, int index = -1) const;
  /// The control; null if there is none.
  Control* find(std::string_view name, int index = -1) noexcept;
  const Control* find(std::string_view name, int index = -1) const noexcept;
  /// The control by "name" or "name(index)"; null if there is none.
  Control* find_path(std::string_view path) noexcept;
  /// All members of a control array, by index; empty if there is none.
  std::vector<Control*> array(std::string_view name);
  std::vector<const Control*> array(std::string_view name) const;
  /// All controls in the form's order.
  const std::vector<std::unique_ptr<Control>>& controls() const noexcept { return controls_; }

  /// Caption and tag of the form itself. The observer does not hear of changes: both are set before the form is shown.
  const std::string& caption() const noexcept { return caption_; }
  void set_caption(std::string_view caption) { caption_ = caption; }
  const std::string& tag() const noexcept { return tag_; }
  void set_tag(std::string_view tag) { tag_ = tag; }

  void request_focus(Control& control);
  void request_redraw(Control& control);
  /// The control for which the focus was last requested; null before the first request.
  Control* focus() const noexcept { return focus_; }

  /// Sets the one observer, or none (null). It must outlive the form or be removed before.
  void set_observer(FormObserver* observer) noexcept { observer_ = observer; }

 private:
  friend class Control;
  void changed(const Control& control, Property property);

  std::vector<std::unique_ptr<Control>> controls_;
  std::string caption_, tag_;
  FormObserver* observer_ = nullptr;
  Control* focus_ = nullptr;
};

/// A caption as it is read aloud: without the mark of its access key, the colon at its end, and the mark of a required
/// field.
std::string plain_caption(std::string caption);

/// Selects the entry with this item data if the value is a whole number, else the entry with this text in any case.
/// Without a match, an editable combo box shows the value itself, any other box nothing. A combo box without entries is
/// disabled unless it is editable. Never raises.
void MatchList(Control& list, std::string_view value);

/// Sets the bar's colour, as 0xBBGGRR; the background becomes white. Never raises.
void SetProgressbarColor(Control& bar, std::uint32_t colour);

}  // namespace form
