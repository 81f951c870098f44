// The findings of the page that is shown, each below the field that it is about, with the icon of its severity. A
// screen reader hears of one when it appears, and again as the description of its field.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "wizard/finding.h"
#include "wizard/win32/page_notes.h"
#include "wizard/win32/shown_controls.h"

namespace wizard::win32 {

class FindingNotes {
 public:
  /// Both must outlive it.
  FindingNotes(form::Form& form, const InstallationConfig& config) : form_(form), config_(config) {}

  /// Makes the lines for these findings and drops those that are mended; true where the lines are others than before.
  /// About the field that is typed into nothing new is said: half a number is none to complain of.
  bool show(const Findings& findings, const ShownControls& controls);
  /// For the layout.
  PageNotes lines() const;
  /// What stands below the field; empty where nothing does.
  std::string text_of(const form::Control& field) const;

 private:
  struct DestroyNote {
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
  };
  using NoteWindow = std::unique_ptr<std::remove_pointer_t<HWND>, DestroyNote>;
  struct Note {
    const form::Control* field = nullptr;
    Severity severity = Severity::Note;
    std::string text;
    NoteWindow window = {};
    bool says_the_same(const Note& other) const { return field == other.field && text == other.text; }
  };

  std::vector<Note> wanted(const Findings& findings) const;
  bool may_appear(const Note& note, const ShownControls& controls) const;
  void make_window(Note& note, const ShownControls& controls) const;

  form::Form& form_;
  const InstallationConfig& config_;
  std::vector<Note> notes_;
};

}  // namespace wizard::win32
