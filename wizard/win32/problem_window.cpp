#include "wizard/win32/problem_window.h"

#include <string>
#include <utility>

#include "support/win32/wide.h"
#include "wizard/win32/control_properties.h"
#include "wizard/win32/dialog_resolution.h"
#include "wizard/win32/drawn_controls.h"
#include "wizard/win32/look.h"
#include "wizard/win32/repeated_key.h"
#include "wizard/win32/twips.h"

namespace wizard::win32 {
namespace {

constexpr long heading_text = 4882, rest_is_saved = 6043, details_caption = 6041, close_caption = 6042;

// Twips. The bar with the buttons begins below the page, as in the wizard's window.
constexpr form::Bounds problem_inner_size{0, 0, 8100, 5100}, heading_place{240, 180, 7620, 420},
    rest_place{240, 660, 7620, 300}, list_place{240, 1080, 7620, 3120}, details_place{240, 4500, 1860, 420},
    close_place{6000, 4500, 1860, 420};
constexpr std::int32_t page_end = 4320;
constexpr DWORD problem_style = WS_POPUP | WS_CAPTION | WS_SYSMENU,
                problem_extended_style = WS_EX_TOPMOST | WS_EX_DLGMODALFRAME;

/// One title for the window and all that opens over it.
std::wstring shown_title(HWND owner) { return support::wide(window_text(owner)); }

class ProblemWindow {
 public:
  ProblemWindow(HWND owner, const InstallationConfig& config, const std::vector<FinishProblem>& problems);
  void run() const;

 private:
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  bool handle(UINT message, WPARAM first);
  HWND add(const wchar_t* class_name, DWORD child_style, const form::Bounds& bounds, TextStyle text_style, int id,
           const std::string& text);
  void place_over(HWND owner) const;
  void fill(const InstallationConfig& config);
  std::string list(bool with_details) const;
  void paint() const;

  HWND owner_, window_ = nullptr, heading_ = nullptr, list_ = nullptr;
  UINT dpi_;
  std::string font_;
  const std::vector<FinishProblem>& problems_;
  Fonts fonts_;
  bool details_ = false;
};

/// A dialog without controls, menu, class and title of its own.
struct EmptyTemplate {
  DLGTEMPLATE head{problem_style, problem_extended_style, 0, 0, 0, 0, 0};
  WORD menu = 0, window_class = 0, title = 0;
};

ProblemWindow::ProblemWindow(HWND owner, const InstallationConfig& config, const std::vector<FinishProblem>& problems)
    : owner_(owner), dpi_(GetDpiForWindow(owner)), font_(config.DefaultFont), problems_(problems) {
  const EmptyTemplate described;
  window_ = CreateDialogIndirectParamW(nullptr, &described.head, owner, procedure, reinterpret_cast<LPARAM>(this));
  SetWindowTextW(window_, shown_title(owner).c_str());
  dress_frame(window_);
  place_over(owner);
  fill(config);
  EnableWindow(owner, FALSE);
  ShowWindow(window_, SW_SHOW);
}

void ProblemWindow::place_over(HWND owner) const {
  RECT frame = pixels(problem_inner_size, dpi_), around{};
  AdjustWindowRectExForDpi(&frame, problem_style, FALSE, problem_extended_style, dpi_);
  const int width = frame.right - frame.left, height = frame.bottom - frame.top;
  GetWindowRect(owner, &around);
  SetWindowPos(window_, nullptr, (around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2,
               width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND ProblemWindow::add(const wchar_t* class_name, DWORD child_style, const form::Bounds& bounds, TextStyle text_style,
                        int id, const std::string& text) {
  const RECT place = pixels(bounds, dpi_);
  const HWND child = CreateWindowExW(0, class_name, support::wide(text).c_str(), WS_CHILD | WS_VISIBLE | child_style,
                                     place.left, place.top, place.right - place.left, place.bottom - place.top, window_,
                                     reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  dress_control(child);
  SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_.font(font_, text_style, dpi_)), FALSE);
  return child;
}

void ProblemWindow::fill(const InstallationConfig& config) {
  constexpr DWORD list_style = WS_TABSTOP | WS_VSCROLL | WS_BORDER | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL;
  constexpr DWORD button = WS_TABSTOP | BS_PUSHBUTTON;
  heading_ = add(L"STATIC", SS_NOPREFIX, heading_place, TextStyle::Heading, -1, config.text(heading_text));
  add(L"STATIC", SS_NOPREFIX, rest_place, TextStyle::Normal, -1, config.text(rest_is_saved));
  list_ = add(L"EDIT", list_style, list_place, TextStyle::Normal, problem_list_id, list(false));
  add(L"BUTTON", button, details_place, TextStyle::Normal, details_button_id, config.text(details_caption));
  const HWND close =
      add(L"BUTTON", button | BS_DEFPUSHBUTTON, close_place, TextStyle::Normal, IDOK, config.text(close_caption));
  SendMessageW(window_, DM_SETDEFID, IDOK, 0);
  SetFocus(close);
}

std::string ProblemWindow::list(bool with_details) const {
  std::string text;
  for (const FinishProblem& problem : problems_) {
    text += (text.empty() ? "" : "\r\n\r\n") + problem.what + "\r\n" + problem.reason;
    if (with_details) text += "\r\n" + problem.technical;
  }
  return text;
}

/// Until the window is closed. A key that is still held down from the page before does not close it.
void ProblemWindow::run() const {
  MSG message;
  while (IsWindow(window_) != 0 && GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (is_repeated_key(message) || IsDialogMessageW(window_, &message) != 0) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

INT_PTR CALLBACK ProblemWindow::procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, second);
    return FALSE;
  }
  auto* self = reinterpret_cast<ProblemWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  if (self == nullptr || self->window_ == nullptr) return FALSE;
  if (message == WM_DPICHANGED) {
    const UINT before = std::exchange(self->dpi_, HIWORD(first));
    take_resolution(window, before, self->dpi_, *reinterpret_cast<const RECT*>(second), [self](HWND child) {
      const TextStyle style = child == self->heading_ ? TextStyle::Heading : TextStyle::Normal;
      return self->fonts_.font(self->font_, style, self->dpi_);
    });
    return TRUE;
  }
  if (!asks_for_colours(message)) return self->handle(message, first) ? TRUE : FALSE;
  const HWND child = reinterpret_cast<HWND>(second);
  return reinterpret_cast<INT_PTR>(colour_control(reinterpret_cast<HDC>(first), message, child,
                                                  child == self->heading_ ? Colour::Heading : Colour::Text,
                                                  message == WM_CTLCOLORBTN ? Colour::Bar : Colour::Page));
}

bool ProblemWindow::handle(UINT message, WPARAM first) {
  switch (message) {
    case WM_COMMAND:
      if (LOWORD(first) == details_button_id) {
        details_ = !details_;
        SetWindowTextW(list_, support::wide(list(details_)).c_str());
      } else if (LOWORD(first) == IDOK || LOWORD(first) == IDCANCEL) {
        // The owner first: otherwise another program would come to the front.
        EnableWindow(owner_, TRUE);
        DestroyWindow(window_);
      }
      return true;
    case WM_ERASEBKGND:
      SetWindowLongPtrW(window_, DWLP_MSGRESULT, TRUE);
      return true;
    case WM_PAINT:
      paint();
      return true;
    default:
      return false;
  }
}

void ProblemWindow::paint() const {
  PAINTSTRUCT painting;
  const HDC target = BeginPaint(window_, &painting);
  RECT page, bar;
  GetClientRect(window_, &page);
  bar = page;
  bar.top = page.bottom = pixels(page_end, dpi_);
  FillRect(target, &page, page_brush());
  FillRect(target, &bar, brush(Colour::Bar));
  EndPaint(window_, &painting);
}

}  // namespace

void show_problems(HWND owner, const InstallationConfig& config, const std::vector<FinishProblem>& problems) {
  ProblemWindow(owner, config, problems).run();
}

}  // namespace wizard::win32
