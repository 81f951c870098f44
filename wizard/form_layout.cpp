#include "wizard/form_layout.h"

#include <fmt/core.h>

#include <string>

#include "wizard/page_grid.h"
#include "wizard/page_list.h"

namespace wizard {

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow shared_controls[] = {
    {"Image1", -1, Image, "", {0, 0, 2160, 5520}, "Illustration", "L4808"},
    {"Timer1", -1, Timer},
};

constexpr form::ControlRow bottom_bar[] = {
    {"pbar", -1, ProgressBar, "", {180, 5790, 2640, 240}, "Fortschritt", "L4809"},
    {"Command1", 1, Button, "", {3000, 5700, 1860, 420}, "< Z&urück", "L906"},
    {"Command1", 0, Button, "", {4920, 5700, 1860, 420}, "Wei&ter >", "L905"},
    {"Command1", 2, Button, "", {6960, 5700, 1860, 420}, "Abbrechen", "L901"},
    {"lstSteps", -1, StepIndicator, "", {180, 5580, 2640, 120}},
};
// clang-format on

void add_rows(form::Form& form, std::span<const form::ControlRow> rows) {
  for (const form::ControlRow& row : rows) form.add(row);
}

void set_pictures(form::Form& form, const Page& page) {
  for (const PagePicture& row : page.pictures) {
    if (row.count == 0) form.at(row.control).set_picture(row.resource);
    for (int n = 0; n < row.count; ++n) form.at(row.control, n).set_picture(fmt::format("{}{}", row.resource, n));
  }
}

void set_limits(form::Form& form, const Page& page) {
  for (const TextLimit& row : page.limits) {
    if (form::Control* control = form.find(row.control)) control->set_maximum(row.characters);
    for (form::Control* control : form.array(row.control)) control->set_maximum(row.characters);
  }
}

void add_page(form::Form& form, const Page& page, int index) {
  const form::Control& container = form.add({"contstep", index, Frame, "", grid::page, "", page.tag, false});
  const std::string path = container.path();
  for (form::ControlRow row : page.controls) {
    if (row.parent.empty()) row.parent = path;
    if (row.index == of_page) row.index = index;
    form.add(row);
  }
}

}  // namespace

void build_form(form::Form& form) {
  form.set_caption("Erste Schritte");
  form.set_tag("L4650");
  add_rows(form, shared_controls);
  int index = 0;
  for (const Page* page : all_pages()) add_page(form, *page, index++);
  add_rows(form, bottom_bar);
  for (const Page* page : all_pages()) {
    set_pictures(form, *page);
    set_limits(form, *page);
  }
}

}  // namespace wizard
