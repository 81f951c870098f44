// The form as data: an ordered list of controls whose properties a window shows and whose events the wizard handles. It
// knows nothing of windows and nothing of diabetes.
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
  ComboBox,      ///< drop-down list; `editable` takes free text too
  Image,
  PictureBox,
  ScrollBar,
  ProgressBar,
  Timer,
};

/// Position inside the parent, in twips (1/1440 inch; 15 to a pixel at 100 %).
struct Bounds {
  std::int32_t left = 0, top = 0, width = 0, height = 0;
  friend bool operator==(const Bounds&, const Bounds&) = default;
};

struct ListItem {
  std::string text;
  std::int32_t item_data = 0;
  friend bool operator==(const ListItem&, const ListItem&) = default;
};

/// Colours of a progress bar, as the platform counts them: 0xBBGGRR.
struct Colours {
  std::uint32_t bar = 0, background = 0xFFFFFF;
  friend bool operator==(const Colours&, const Colours&) = default;
};

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

class Form;

/// One control. Setters tell the form's observer of real changes only; they raise no events.
class Control {
 public:
  const std::string& name() const noexcept { return name_; }
  /// Index in its control array; -1 for a control that is in none.
  int index() const noexcept { return index_; }
  Kind kind() const noexcept { return kind_; }
  /// The container it lies in; null on the form itself.
  Control* parent() const noexcept { return parent_; }
  /// "name" or "name(index)".
  std::string path() const;

  const std::string& tag() const noexcept { return tag_; }
  const std::string& caption() const noexcept { return caption_; }  ///< "&" marks the access key
  const std::string& tooltip() const noexcept { return tooltip_; }
  const std::string& font() const noexcept { return font_; }
  const std::string& text() const noexcept { return text_; }  ///< text and combo boxes
  int value() const noexcept { return value_; }               ///< 1 chosen; scroll and progress position
  /// Scroll and progress bars: the last position. Text and editable combo boxes: the most characters a user may type.
  int maximum() const noexcept { return maximum_; }
  bool visible() const noexcept { return visible_; }  ///< its own flag, whatever the parent's
  bool enabled() const noexcept { return enabled_; }
  bool editable() const noexcept { return editable_; }
  int interval() const noexcept { return interval_; }  ///< milliseconds; 0 stopped
  const std::string& picture() const noexcept {
    return picture_;
  }  ///< resource number ("103") or a file path; empty none
  const Bounds& bounds() const noexcept { return bounds_; }
  const std::vector<ListItem>& items() const noexcept { return items_; }
  int list_index() const noexcept { return list_index_; }       ///< -1 nothing selected
  const Colours& colours() const noexcept { return colours_; }  ///< progress bar
  /// Item data of the selected entry; 0 where nothing is selected.
  std::int32_t selected_item_data() const noexcept;

  void set_tag(std::string_view tag);
  void set_caption(std::string_view caption);
  void set_tooltip(std::string_view tooltip);
  void set_font(std::string_view font);
  void set_text(std::string_view text);  ///< in a combo box also selects the entry of exactly this text, if any
  void set_value(int value);             ///< choosing an option button unchooses the others of its array
  void set_maximum(int maximum);
  void set_visible(bool visible);
  void set_enabled(bool enabled);
  void set_interval(int milliseconds);
  void set_picture(std::string_view picture);
  void set_bounds(const Bounds& bounds);
  void set_items(std::vector<ListItem> items);  ///< clears the selection
  void set_list_index(int list_index);          ///< also sets the text; out of range clears both
  void set_colours(const Colours& colours);

 private:
  friend class Form;
  template <typename Member, typename Value>
  void assign(Member& member, const Value& value, Property property);

  Form* form_ = nullptr;
  std::string name_;
  int index_ = -1;
  Kind kind_ = Kind::Label;
  Control* parent_ = nullptr;
  std::string tag_, caption_, tooltip_, font_, text_, picture_;
  int value_ = 0, maximum_ = 100, interval_ = 0, list_index_ = -1;
  bool visible_ = true, enabled_ = true, editable_ = false;
  Bounds bounds_;
  Colours colours_;
  std::vector<ListItem> items_;
};

/// A row of the table that a form is built from. Of two controls that overlap, the later one lies above.
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

class FormObserver {
 public:
  virtual ~FormObserver() = default;
  virtual void property_changed(const Control& control, Property property) = 0;
  virtual void control_added(const Control& control) = 0;
  virtual void focus_requested(const Control& control) = 0;
  virtual void redraw_requested(const Control& control) = 0;
};

class Form {
 public:
  Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Raises support::RuntimeError 360 where name and index are taken, 340 for an unknown container.
  Control& add(const ControlRow& row);
  /// The control; raises support::RuntimeError 340 (no such control) where there is none. Names ignore case.
  Control& at(std::string_view name, int index = -1);
  const Control& at(std::string_view name, int index = -1) const;
  Control* find(std::string_view name, int index = -1) noexcept;
  const Control* find(std::string_view name, int index = -1) const noexcept;
  /// By "name" or "name(index)"; null where there is none.
  Control* find_path(std::string_view path) noexcept;
  /// All members of a control array, by index.
  std::vector<Control*> array(std::string_view name);
  std::vector<const Control*> array(std::string_view name) const;
  /// In the form's control order.
  const std::vector<std::unique_ptr<Control>>& controls() const noexcept { return controls_; }

  const std::string& caption() const noexcept { return caption_; }
  void set_caption(std::string_view caption);
  const std::string& tag() const noexcept { return tag_; }
  void set_tag(std::string_view tag) { tag_ = tag; }

  void request_focus(Control& control);
  void request_redraw(Control& control);
  /// The control that last asked for the focus; null where none did.
  Control* focus() const noexcept { return focus_; }

  /// One observer, or none (null). It must outlive the form or be taken away.
  void set_observer(FormObserver* observer) noexcept { observer_ = observer; }

 private:
  friend class Control;
  void changed(const Control& control, Property property);

  std::vector<std::unique_ptr<Control>> controls_;
  std::string caption_, tag_;
  FormObserver* observer_ = nullptr;
  Control* focus_ = nullptr;
};

}  // namespace form
