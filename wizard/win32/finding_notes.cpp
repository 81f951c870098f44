#include "wizard/win32/finding_notes.h"

// These need windows.h before them.
#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "support/win32/wide.h"
#include "wizard/finding.h"
#include "wizard/win32/accessible_control.h"
#include "wizard/win32/colours.h"
#include "wizard/win32/control_properties.h"
#include "wizard/win32/gdi.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR note_id = 4;
// Numbers of the system's icons, as its headers name them only where they are asked to.
constexpr WORD warning_icon = 32515, note_icon = 32516;

/// What a note's window is drawn by: kept in the subclass, one word.
constexpr DWORD_PTR is_warning = 1;

HFONT font_of(HWND window) { return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)); }

int icon_side(HDC context) {
  TEXTMETRICW metrics{};
  GetTextMetricsW(context, &metrics);
  return metrics.tmHeight;
}

/// The text's place beside the icon.
RECT beside_icon(HDC context, const RECT& whole) {
  RECT place = whole;
  place.left += icon_side(context) * 5 / 4;
  return place;
}

int height_of_note(HWND window, int width, UINT) {
  const WindowContext context(window);
  const Selection font(context.get(), font_of(window));
  RECT place = beside_icon(context.get(), {0, 0, width, 0});
  DrawTextW(context.get(), support::wide(window_text(window)).c_str(), -1, &place,
            DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
  return place.bottom;
}

void draw_note(HWND window, HDC target, bool warning) {
  RECT whole;
  GetClientRect(window, &whole);
  FillRect(target, &whole, page_brush());
  const Selection font(target, font_of(window));
  const int side = icon_side(target);
  const HANDLE icon =
      LoadImageW(nullptr, MAKEINTRESOURCEW(warning ? warning_icon : note_icon), IMAGE_ICON, 0, 0, LR_SHARED);
  DrawIconEx(target, 0, 0, static_cast<HICON>(icon), side, side, 0, nullptr, DI_NORMAL);
  RECT place = beside_icon(target, whole);
  SetBkMode(target, TRANSPARENT);
  SetTextColor(target, colour(warning ? Colour::Warning : Colour::Note));
  DrawTextW(target, support::wide(window_text(window)).c_str(), -1, &place, DT_WORDBREAK | DT_NOPREFIX);
}

LRESULT CALLBACK note_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR data) {
  if (message == WM_PAINT) {
    PAINTSTRUCT painting;
    draw_note(window, BeginPaint(window, &painting), data == is_warning);
    EndPaint(window, &painting);
    return 0;
  }
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, note_procedure, note_id);
  return DefSubclassProc(window, message, first, second);
}

bool has_focus(HWND window) {
  const HWND focus = GetFocus();
  return focus == window || (focus != nullptr && IsChild(window, focus) != 0);
}

}  // namespace

/// Several findings about one field stand below each other, and the gravest lends its icon.
std::vector<FindingNotes::Note> FindingNotes::wanted(const Findings& findings) const {
  std::vector<Note> notes;
  for (const Finding& finding : findings) {
    const form::Control* field = finding.control.empty() ? nullptr : form_.find_path(finding.control);
    if (field == nullptr || !is_seen(*field)) continue;
    const std::string text = marked_text(config_, finding);
    const auto same = std::ranges::find(notes, field, &Note::field);
    if (same == notes.end()) {
      notes.push_back({.field = field, .severity = finding.severity, .text = text});
      continue;
    }
    same->text += "\r\n" + text;
    same->severity = std::max(same->severity, finding.severity);
  }
  return notes;
}

bool FindingNotes::may_appear(const Note& note, const ShownControls& controls) const {
  const ShownControl* field = controls.of(*note.field);
  if (field == nullptr || field->window == nullptr) return false;
  return !note.field->editable() || !has_focus(field->window);
}

/// Behind its field in the order of the windows, which is that of a screen reader.
void FindingNotes::make_window(Note& note, const ShownControls& controls) const {
  const HWND field = controls.of(*note.field)->window;
  note.window.reset(CreateWindowExW(0, L"STATIC", support::wide(note.text).c_str(),
                                    WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0, 0, 0, 0, GetParent(field),
                                    nullptr, nullptr, nullptr));
  const HWND window = note.window.get();
  SetWindowSubclass(window, note_procedure, note_id, note.severity == Severity::Warning ? is_warning : 0);
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font_of(field)), FALSE);
  SetWindowPos(window, field, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  make_accessible(
      window,
      [text = note.text] {
        return Spoken{text, {}, false};
      },
      ROLE_SYSTEM_ALERT);
  announce_alert(window);
  announce_change(field);
}

bool FindingNotes::show(const Findings& findings, const ShownControls& controls) {
  std::vector<Note> now = wanted(findings);
  std::erase_if(now, [&](const Note& note) {
    const bool stands = std::ranges::any_of(notes_, [&](const Note& old) { return old.says_the_same(note); });
    return !stands && !may_appear(note, controls);
  });
  if (std::ranges::equal(now, notes_, [](const Note& left, const Note& right) { return left.says_the_same(right); }))
    return false;
  for (Note& note : now) {
    const auto old = std::ranges::find_if(notes_, [&](const Note& each) { return each.says_the_same(note); });
    if (old != notes_.end()) note.window = std::move(old->window);
  }
  notes_ = std::move(now);
  for (Note& note : notes_)
    if (!note.window) make_window(note, controls);
  return true;
}

PageNotes FindingNotes::lines() const {
  PageNotes lines;
  for (const Note& note : notes_) lines.push_back({note.field, note.window.get(), height_of_note});
  return lines;
}

std::string FindingNotes::text_of(const form::Control& field) const {
  const auto note = std::ranges::find(notes_, &field, &Note::field);
  return note == notes_.end() ? std::string() : note->text;
}

}  // namespace wizard::win32
