#include "wizard/win32/page_layout.h"

#include <algorithm>
#include <numeric>

#include "wizard/win32/twips.h"

namespace wizard::win32 {
namespace {

using enum form::Kind;

// Pixels at 96 to the inch. A gap stands above its line.
constexpr int margin = 20, top_margin = 16, widest_content = 800;
constexpr int line_gap = 10, option_gap = 4, explanation_gap = 2, text_gap = 14, cell_gap = 10, option_cell_gap = 28;
constexpr int option_mark = 22, option_text = 18, option_room = 6, field_room = 3, button_room = 12, button_sides = 28,
              least_button = 96;
constexpr int least_field = 110, least_beside_label = 240, least_area = 150, least_picture = 110, highest_picture = 360,
              least_column = 140, least_beside = 250;
/// Pixels of any resolution: what a field has around its text, which stands at its upper edge.
constexpr int field_edge = 3;
/// Twips: a field that is designed wider than this takes what room there is.
constexpr std::int32_t widest_short_field = 2400, field_column = 1000;

class Pass {
 public:
  Pass(const PageNotes& notes, const TextSizes& sizes, SIZE page, int room_to_grow)
      : notes_(notes), sizes_(sizes), page_(page), grow_(room_to_grow) {}

  PagePlaces run(const std::vector<PageLine>& lines);
  /// By how much the column beside an area was higher than the area.
  int overhang() const noexcept { return overhang_; }

 private:
  /// Where lines are laid: from this left end on, so wide.
  struct Column {
    int left, width, label;  ///< the last: width of the labels before fields; 0 where they stand above
  };

  int scaled(int length) const { return sizes_.scaled(length); }
  void put(const form::Control* control, int left, int top, int width, int height);
  void lay(const PageLine& line, Column column);
  void lay_all(const std::vector<PageLine>& lines, Column column);
  int gap_above(const PageLine& line) const;
  void lay_heading(const PageLine& line, Column column);
  void lay_text(const PageLine& line, Column column);
  void lay_group(const PageLine& line, Column column);
  void lay_pictures(const PageLine& line, Column column);
  void lay_area(const PageLine& line, Column column);
  void lay_side_column(const std::vector<PageLine>& lines, Column column, int bottom);
  void lay_fields(const std::vector<Cell>& cells, Column column);
  void lay_cells(const std::vector<Cell>& cells, int left, int width);
  void lay_notes(const PageLine& line, Column column);
  int label_column(const std::vector<PageLine>& lines, int width) const;
  bool is_option_line(const std::vector<Cell>& cells) const;
  int least_width(const Cell& cell, bool with_label) const;
  int control_width(const form::Control& control) const;
  int control_height(const form::Control& control, int width) const;

  const PageNotes& notes_;
  const TextSizes& sizes_;
  SIZE page_;
  int grow_;
  int y_ = 0, overhang_ = 0;
  const PageLine* above_ = nullptr;
  PagePlaces places_;
};

bool takes_room_left(const form::Control& control) {
  return (control.kind() == TextBox || control.kind() == ComboBox || control.kind() == Button) &&
         control.bounds().width >= widest_short_field;
}

bool is_empty_text(const PageLine& line) {
  return line.kind == LineKind::Text && line.cells.front().label->caption().empty();
}

/// Pictures of a sequence are hidden in turn, and keep their place.
bool is_hidden(const PageLine& line) {
  if (line.kind == LineKind::Pictures) return false;
  const auto is_shown = [](const form::Control* control) { return control != nullptr && control->visible(); };
  return std::ranges::none_of(line.cells,
                              [&](const Cell& cell) { return is_shown(cell.label) || is_shown(cell.control); });
}

/// How far below a control's upper end a line of its text begins.
int text_offset(const form::Control& control, int height, int line) {
  if (control.kind() == Label) return 0;
  return control.kind() == TextBox ? field_edge : (height - line) / 2;
}

void Pass::put(const form::Control* control, int left, int top, int width, int height) {
  places_.controls.emplace_back(control, RECT{left, top, left + width, top + height});
}

int Pass::control_width(const form::Control& control) const {
  const int text = sizes_.width(control);
  switch (control.kind()) {
    case OptionButton:
      return text + scaled(option_mark);
    case Button:
      return std::max(text + scaled(button_sides), scaled(least_button));
    case TextBox:
    case ComboBox:
      return sizes_.with_text(pixels(control.bounds().width, USER_DEFAULT_SCREEN_DPI));
    default:
      return text + scaled(1);
  }
}

int Pass::control_height(const form::Control& control, int width) const {
  switch (control.kind()) {
    case OptionButton:
      return std::max(sizes_.height(control, width - scaled(option_mark)), sizes_.line(control)) + scaled(option_room);
    case Button:
      return std::max(sizes_.height(control, width - scaled(button_room)), sizes_.line(control)) + scaled(button_room);
    case Label:
      return std::max(sizes_.height(control, width), sizes_.line(control));
    default:
      return sizes_.line(control) + 2 * field_edge + scaled(field_room);
  }
}

/// Labels before their fields share a column, unless that leaves too little room for the fields.
int Pass::label_column(const std::vector<PageLine>& lines, int width) const {
  int widest = 0;
  for (const PageLine& line : lines)
    if (line.kind == LineKind::Fields && line.cells.front().label != nullptr)
      widest = std::max(widest, sizes_.width(*line.cells.front().label) + scaled(1));
  widest = std::min(widest, width / 2);
  return width - widest - scaled(cell_gap) < sizes_.with_text(least_beside_label) ? 0 : widest;
}

int Pass::gap_above(const PageLine& line) const {
  if (above_ == nullptr) return 0;
  if (line.indented) return scaled(explanation_gap);
  if (above_->kind == LineKind::Heading) return scaled(line_gap) / 2;
  if (line.kind == LineKind::Text || above_->kind == LineKind::Text) return scaled(text_gap);
  return scaled(is_option_line(line.cells) && is_option_line(above_->cells) ? option_gap : line_gap);
}

void Pass::lay_all(const std::vector<PageLine>& lines, Column column) {
  column.label = label_column(lines, column.width);
  for (const PageLine& line : lines) {
    if (is_hidden(line)) continue;
    if (is_empty_text(line)) {
      put(line.cells.front().label, column.left, y_, column.width, 0);
      continue;
    }
    y_ += gap_above(line);
    lay(line, column);
    lay_notes(line, column);
    above_ = &line;
  }
}

void Pass::lay(const PageLine& line, Column column) {
  switch (line.kind) {
    case LineKind::Heading:
      return lay_heading(line, column);
    case LineKind::Text:
      return lay_text(line, column);
    case LineKind::Group:
      return lay_group(line, column);
    case LineKind::Pictures:
      return lay_pictures(line, column);
    case LineKind::Area:
      return lay_area(line, column);
    case LineKind::Fields:
      return lay_fields(line.cells, column);
  }
}

void Pass::lay_heading(const PageLine& line, Column column) {
  int right = column.left + column.width, height = 0;
  for (const Cell& cell : line.cells) {
    if (cell.control == nullptr) continue;
    const bool is_button = cell.control->kind() == Button;
    const form::Bounds& design = cell.control->bounds();
    SIZE size = inner_size({0, 0, design.width, design.height}, sizes_.dpi());
    if (is_button) size.cx = control_width(*cell.control);
    if (is_button) size.cy = control_height(*cell.control, size.cx);
    put(cell.control, column.left + column.width - size.cx, y_, size.cx, size.cy);
    right = column.left + column.width - size.cx - scaled(cell_gap);
    height = size.cy;
  }
  const form::Control& heading = *line.cells.front().label;
  const int text = control_height(heading, right - column.left);
  put(&heading, column.left, y_, right - column.left, text);
  y_ += std::max(height, text);
}

void Pass::lay_text(const PageLine& line, Column column) {
  const form::Control& label = *line.cells.front().label;
  const int field = column.label > 0 ? column.label + scaled(cell_gap) : 0;
  const int indent = !line.indented ? 0 : label.bounds().left < field_column ? scaled(option_text) : field;
  const int width = column.width - indent;
  int height = control_height(label, width);
  // Below a picture the text changes with it, and the picture must not.
  if (above_ != nullptr && above_->kind == LineKind::Pictures) height = std::max(height, 2 * sizes_.line(label));
  put(&label, column.left + indent, y_, width, height);
  y_ += height;
}

void Pass::lay_group(const PageLine& line, Column column) {
  const form::Control& box = *line.cells.front().control;
  const int top = y_, inside = scaled(text_gap);
  y_ += sizes_.line(box) + scaled(option_room);
  above_ = nullptr;
  const std::size_t place = places_.controls.size();
  put(&box, column.left, top, column.width, 0);
  lay_all(line.inner, {column.left + inside, column.width - 2 * inside, 0});
  y_ += scaled(line_gap);
  places_.controls[place].second.bottom = y_;
}

/// The picture keeps its shape; those over it keep their places in it.
void Pass::lay_pictures(const PageLine& line, Column column) {
  const form::Control& base = *line.cells.front().control;
  const SIZE design = inner_size({0, 0, base.bounds().width, base.bounds().height}, sizes_.dpi());
  int height = std::min(scaled(least_picture) + grow_, scaled(highest_picture)),
      width = MulDiv(height, design.cx, design.cy);
  if (width > column.width) {
    width = column.width;
    height = MulDiv(width, design.cy, design.cx);
  }
  for (const Cell& cell : line.cells) {
    const form::Bounds &part = cell.control->bounds(), &whole = base.bounds();
    const auto across = [&](std::int32_t twips) { return MulDiv(twips, width, whole.width); };
    put(cell.control, column.left + across(part.left - whole.left), y_ + across(part.top - whole.top),
        across(part.width), across(part.height));
  }
  y_ += height;
}

void Pass::lay_area(const PageLine& line, Column column) {
  const form::Control& area = *line.cells.front().control;
  const int top = y_, height = sizes_.with_text(least_area) + grow_;
  int width = column.width;
  const int side = std::max(sizes_.with_text(least_column), column.width / 4);
  const bool beside = !line.beside.empty() && column.width - side - scaled(margin) >= sizes_.with_text(least_beside);
  if (beside) width -= side + scaled(margin);
  put(&area, column.left, top, width, height);
  if (beside) {
    lay_side_column(line.beside, {column.left + width + scaled(margin), side, 0}, top + height);
    overhang_ = std::max(y_ - (top + height), 0);
    y_ = std::max(y_, top + height);
    return;
  }
  y_ = top + height;
  above_ = &line;
  if (line.beside.empty()) return;
  y_ += scaled(line_gap);
  lay_all(line.beside, column);
}

/// Its last line stands at the bottom, so that the texts above may grow.
void Pass::lay_side_column(const std::vector<PageLine>& lines, Column column, int bottom) {
  above_ = nullptr;
  const std::vector<PageLine> texts(lines.begin(), lines.end() - 1);
  lay_all(texts, column);
  const form::Control& last = *lines.back().cells.front().control;
  const int height = control_height(last, column.width);
  const int top = std::max(bottom - height, y_ + scaled(line_gap));
  put(&last, column.left, top, column.width, height);
  y_ = top + height;
}

bool Pass::is_option_line(const std::vector<Cell>& cells) const {
  return !cells.empty() && cells.back().control != nullptr && cells.back().control->kind() == OptionButton;
}

int Pass::least_width(const Cell& cell, bool with_label) const {
  const bool grows = takes_room_left(*cell.control) && cell.control->kind() != Button;
  int width = grows ? sizes_.with_text(least_field) : control_width(*cell.control);
  if (cell.unit != nullptr) width += scaled(cell_gap) + sizes_.width(*cell.unit) + scaled(1);
  if (with_label && cell.label != nullptr) width += scaled(cell_gap) + sizes_.width(*cell.label) + scaled(1);
  return width;
}

/// The label of the first cell, then the cells beside each other; where they do not fit, each gets a line of its own.
void Pass::lay_fields(const std::vector<Cell>& cells, Column column) {
  const form::Control* label = cells.front().label;
  int left = column.left, width = column.width, beside = 0;
  const int gap = scaled(is_option_line(cells) ? option_cell_gap : cell_gap);
  if (label != nullptr && column.label > 0) {
    beside = column.label;
    left += beside + scaled(cell_gap);
    width -= beside + scaled(cell_gap);
  }
  int needed = -gap;
  for (const Cell& cell : cells) needed += gap + least_width(cell, &cell != &cells.front());
  if (needed > width && cells.size() > 1) {
    for (const Cell& cell : cells) {
      Column same = column;
      if (cell.label == nullptr && beside > 0) same = {left, width, 0};
      lay_fields({cell}, same);
      if (&cell != &cells.back()) y_ += scaled(option_gap);
    }
    return;
  }
  if (label != nullptr && beside == 0) {
    const int height = control_height(*label, width);
    put(label, left, y_, width, height);
    y_ += height + scaled(explanation_gap);
  }
  const int top = y_;
  lay_cells(cells, left, width);
  if (beside == 0) return;
  // The label stands on the line of the field's text.
  const int height = control_height(*label, beside), line = sizes_.line(*label);
  put(label, column.left, top + (height > line ? 0 : text_offset(*cells.front().control, y_ - top, line)), beside,
      height);
  y_ = std::max(y_, top + height);
}

void Pass::lay_cells(const std::vector<Cell>& cells, int left, int width) {
  const int gap = scaled(is_option_line(cells) ? option_cell_gap : cell_gap);
  int needed = -gap, growing = 0, height = 0, button = 0;
  for (const Cell& cell : cells) {
    needed += gap + least_width(cell, &cell != &cells.front());
    if (cell.control->kind() == Button) button = std::max(button, control_height(*cell.control, width));
    growing += takes_room_left(*cell.control) && cell.control->kind() != Button ? 1 : 0;
  }
  const int more = growing > 0 ? std::max(0, width - needed) / growing : 0;
  const int top = y_, right = left + width;
  const auto text_top = [&](const form::Control& text) {
    const form::Control& first = *cells.front().control;
    return top + text_offset(first, control_height(first, width), sizes_.line(text));
  };
  for (const Cell& cell : cells) {
    if (cell.label != nullptr && &cell != &cells.front()) {
      const int label = sizes_.width(*cell.label) + scaled(1);
      put(cell.label, left, text_top(*cell.label), label, control_height(*cell.label, label));
      left += label + scaled(cell_gap);
    }
    const bool grows = takes_room_left(*cell.control) && cell.control->kind() != Button;
    int own = grows ? sizes_.with_text(least_field) + more : control_width(*cell.control);
    // A long option or text wraps; a text that stands alone has the whole line.
    own = cell.control->kind() == Label && cell.unit == nullptr ? right - left : std::min(own, right - left);
    const int own_height = control_height(*cell.control, own);
    // A list stands at the middle of a button beside it.
    const int lower = cell.control->kind() == ComboBox ? std::max(0, (button - own_height) / 2) : 0;
    put(cell.control, left, y_ + lower, own, own_height);
    height = std::max(height, lower + own_height);
    left += own;
    if (cell.unit != nullptr) {
      left += scaled(cell_gap);
      put(cell.unit, left, text_top(*cell.unit), sizes_.width(*cell.unit) + scaled(1), sizes_.line(*cell.unit));
    }
    left += gap;
  }
  y_ = top + height;
}

void Pass::lay_notes(const PageLine& line, Column column) {
  const bool beside = line.kind == LineKind::Fields && line.cells.front().label != nullptr && column.label > 0;
  const int indent = beside ? column.label + scaled(cell_gap) : 0;
  for (const PageNote& note : notes_) {
    const auto is_below = [&](const Cell& cell) { return cell.control == note.field || cell.label == note.field; };
    if (!std::ranges::any_of(line.cells, is_below)) continue;
    const int width = column.width - indent, height = note.height(note.window, width, sizes_.dpi());
    y_ += scaled(explanation_gap);
    places_.notes.emplace_back(note.window, RECT{column.left + indent, y_, column.left + indent + width, y_ + height});
    y_ += height;
  }
}

PagePlaces Pass::run(const std::vector<PageLine>& lines) {
  y_ = scaled(top_margin);
  const int width = std::min(static_cast<int>(page_.cx) - 2 * scaled(margin), sizes_.with_text(widest_content));
  lay_all(lines, {scaled(margin), width, 0});
  places_.height = y_ + scaled(top_margin);
  return std::move(places_);
}

}  // namespace

PagePlaces place_page(const std::vector<PageLine>& lines, const PageNotes& notes, const TextSizes& sizes, SIZE page) {
  Pass smallest(notes, sizes, page, 0);
  PagePlaces places = smallest.run(lines);
  const bool grows = std::ranges::any_of(
      lines, [](const PageLine& line) { return line.kind == LineKind::Pictures || line.kind == LineKind::Area; });
  const int room = page.cy - (places.height - smallest.overhang());
  return grows && room > 0 ? Pass(notes, sizes, page, room).run(lines) : places;
}

}  // namespace wizard::win32
