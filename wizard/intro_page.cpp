// Page "Intro": the welcome.
#include "wizard/page_grid.h"
#include "wizard/page_list.h"

namespace wizard {

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow intro_controls[] = {
    {"Label2", -1, Label, "", grid::heading_bounds, "Willkommen"},
    grid::purpose("Dieser Assistent richtet das Programm für Sie ein.", "L4721"),
    {"lblIntro", -1, Label, "", {120, 1500, 6360, 3600}, "Sie brauchen dafür nur wenige Minuten.", "L4803"},
};
// clang-format on

}  // namespace

constinit const Page intro_page{.tag = "Intro", .step = "INtro", .shown_in = Edition::Both, .controls = intro_controls};

}  // namespace wizard
