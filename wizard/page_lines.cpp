#include "wizard/page_lines.h"

#include <algorithm>
#include <utility>

#include "support/encoding.h"
#include "wizard/page_list.h"

namespace wizard {

namespace {

using enum form::Kind;
using Controls = std::vector<const form::Control*>;

// In twips. Labels are a little lower than their fields. Most lines begin at the page's edge.
constexpr std::int32_t same_line = 120, page_edge = 180, smallest = 60;

bool is_label(const form::Control& control) { return control.kind() == Label; }
bool is_area(const form::Control& control) {
  return control.kind() == PictureBox || (control.kind() == TextBox && !control.editable());
}
bool is_heading(const form::Control& control) {
  return is_label(control) && (support::equal_ignoring_case(control.name(), "lblHeading") ||
                               support::equal_ignoring_case(control.name(), "Label2"));
}

std::int64_t size_of(const form::Control& control) {
  return std::int64_t{control.bounds().width} * control.bounds().height;
}

bool lies_over(const form::Control& control, const form::Control& other) {
  const form::Bounds &a = control.bounds(), &b = other.bounds();
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height && b.top < a.top + a.height;
}

Controls contents(const form::Form& form, const form::Control& container) {
  Controls found;
  for (const auto& control : form.controls())
    if (control->parent() == &container && control->bounds().width >= smallest) found.push_back(control.get());
  return found;
}

/// Takes the largest picture and the pictures that lie over it out of `controls`; the others stay there.
PageLine take_pictures(Controls& controls) {
  PageLine line{.kind = LineKind::Pictures};
  const form::Control* largest = nullptr;
  for (const form::Control* control : controls)
    if (control->kind() == Image && (largest == nullptr || size_of(*control) > size_of(*largest))) largest = control;
  if (largest == nullptr) return line;
  line.cells.push_back({.control = largest});
  std::erase(controls, largest);
  std::erase_if(controls, [&](const form::Control* control) {
    const bool taken = control->kind() == Image && lies_over(*control, *largest);
    if (taken) line.cells.push_back({.control = control});
    return taken;
  });
  return line;
}

/// A label belongs to the control behind it; a label behind the last control is that control's unit.
std::vector<Cell> cells_of(Controls line) {
  std::ranges::sort(line, {}, [](const form::Control* control) { return control->bounds().left; });
  std::vector<Cell> cells;
  for (std::size_t n = 0; n < line.size(); ++n) {
    const bool has_next = n + 1 < line.size();
    if (!is_label(*line[n])) {
      cells.push_back({.control = line[n]});
    } else if (has_next) {
      cells.push_back({.label = line[n], .control = line[n + 1]});
      ++n;
    } else if (!cells.empty() && cells.back().unit == nullptr && cells.back().control != nullptr) {
      cells.back().unit = line[n];
    } else {
      cells.push_back({.label = line[n]});
    }
  }
  return cells;
}

LineKind kind_of(const Controls& line) {
  const form::Control& first = *line.front();
  if (std::ranges::any_of(line, [](const form::Control* control) { return is_heading(*control); }))
    return LineKind::Heading;
  if (is_area(first)) return LineKind::Area;
  if (first.kind() == Frame) return LineKind::Group;
  return line.size() == 1 && is_label(first) ? LineKind::Text : LineKind::Fields;
}

std::vector<PageLine> lines_in(const form::Form& form, const form::Control& container, Controls controls);

PageLine line_of(const form::Form& form, const Controls& controls) {
  PageLine line{.kind = kind_of(controls), .cells = cells_of(controls)};
  line.indented = controls.front()->bounds().left > page_edge && line.kind == LineKind::Text;
  if (line.kind == LineKind::Group) line.inner = lines_in(form, *controls.front(), contents(form, *controls.front()));
  return line;
}

std::vector<PageLine> lines_in(const form::Form& form, const form::Control& container, Controls controls) {
  // A heading and the picture at its end stay together.
  Controls heading;
  std::erase_if(controls, [&](const form::Control* control) {
    const bool taken = control->bounds().top <= same_line && (is_heading(*control) || control->kind() == Image) &&
                       container.parent() == nullptr;
    if (taken) heading.push_back(control);
    return taken;
  });
  PageLine pictures = take_pictures(controls);
  if (!heading.empty()) controls.insert(controls.begin(), heading.begin(), heading.end());
  const auto top_of = [](const form::Control* control) { return control->bounds().top; };
  std::ranges::stable_sort(controls, {}, top_of);
  std::vector<PageLine> lines;
  for (std::size_t begin = 0, end = 0; begin < controls.size(); begin = end) {
    while (end < controls.size() && top_of(controls[end]) - top_of(controls[begin]) <= same_line) ++end;
    if (!pictures.cells.empty() && top_of(controls[begin]) > top_of(pictures.cells.front().control))
      lines.push_back(std::exchange(pictures, {}));
    lines.push_back(line_of(form, Controls(controls.begin() + static_cast<std::ptrdiff_t>(begin),
                                           controls.begin() + static_cast<std::ptrdiff_t>(end))));
  }
  if (!pictures.cells.empty()) lines.push_back(std::move(pictures));
  return lines;
}

/// Takes the page's column out of its controls.
std::vector<PageLine> take_column(const form::Form& form, const form::Control& page, Controls& controls) {
  std::vector<PageLine> column;
  const Page* row = find_page(page.tag());
  if (row == nullptr) return column;
  for (const BesideRow& beside : row->beside) {
    const Cell cell{.label = form.find(beside.label), .control = form.find(beside.control)};
    const LineKind kind = cell.control == nullptr ? LineKind::Text : LineKind::Fields;
    column.push_back({.kind = kind, .cells = {cell}});
    std::erase(controls, cell.label);
    std::erase(controls, cell.control);
  }
  return column;
}

}  // namespace

std::vector<PageLine> page_lines(const form::Form& form, const form::Control& page) {
  Controls controls = contents(form, page);
  std::vector<PageLine> column = take_column(form, page, controls);
  std::vector<PageLine> lines = lines_in(form, page, std::move(controls));
  const auto area = std::ranges::find(lines, LineKind::Area, &PageLine::kind);
  if (area != lines.end()) area->beside = std::move(column);
  return lines;
}

}  // namespace wizard
