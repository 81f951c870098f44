// The messages of the wizard's window.
#include "wizard/win32/assistant_window.h"
#include "wizard/win32/drawn_controls.h"
#include "wizard/win32/frame_window.h"
#include "wizard/win32/page_images.h"

namespace wizard::win32 {
namespace {

Colour text_colour(const ShownControl* shown) {
  switch (shown != nullptr ? text_style(*shown->control) : TextStyle::Normal) {
    case TextStyle::Heading:
    case TextStyle::Emphasis:
      return Colour::Heading;
    case TextStyle::Hint:
      return Colour::Hint;
    default:
      return Colour::Text;
  }
}

int thumb_position(HWND bar) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  GetScrollInfo(bar, SB_CTL, &info);
  return info.nTrackPos;
}

}  // namespace

INT_PTR CALLBACK AssistantWindow::dialog_procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, second);
    return FALSE;
  }
  auto* self = reinterpret_cast<AssistantWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  if (self == nullptr) return FALSE;
  if (asks_for_colours(message)) {
    const HWND child = reinterpret_cast<HWND>(second);
    const bool on_bar = GetParent(child) == window;
    return reinterpret_cast<INT_PTR>(colour_control(
        reinterpret_cast<HDC>(first), message, child,
        on_bar ? Colour::BarText : text_colour(self->view_.controls().of(child)), on_bar ? Colour::Bar : Colour::Page));
  }
  return self->handle_user_message(window, message, first, second) ||
                 self->handle_window_message(window, message, second) ||
                 self->handle_system_message(window, message, first, second)
             ? TRUE
             : FALSE;
}

/// What the user does.
bool AssistantWindow::handle_user_message(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      command(second != 0 ? reinterpret_cast<HWND>(second) : GetDlgItem(window, LOWORD(first)), HIWORD(first));
      return true;
    case WM_VSCROLL: {
      const HWND bar = reinterpret_cast<HWND>(second);
      const ShownControl* shown = view_.controls().of(bar);
      if (shown != nullptr && shown->control->kind() == form::Kind::ScrollBar)
        scroll(*shown->control, LOWORD(first), thumb_position(bar));
      else
        view_.scroll_page(LOWORD(first));
      return true;
    }
    case WM_MOUSEWHEEL:
      turn_wheel(GET_WHEEL_DELTA_WPARAM(first));
      return true;
    case WM_CLOSE:
      close();
      return true;
    default:
      return false;
  }
}

/// What the window shows.
bool AssistantWindow::handle_window_message(HWND window, UINT message, LPARAM second) {
  switch (message) {
    case WM_NOTIFY:
      return view_.answer_tip(*reinterpret_cast<NMHDR*>(second));
    case WM_HELP:
      assistant_.help();
      return true;
    case WM_TIMER:
      assistant_.tick();
      return true;
    case WM_DRAWITEM:
      draw_image(*reinterpret_cast<const DRAWITEMSTRUCT*>(second), view_.controls());
      return true;
    case WM_ERASEBKGND:
      SetWindowLongPtrW(window, DWLP_MSGRESULT, TRUE);
      return true;
    case WM_PAINT:
      paint_window(window);
      return true;
    default:
      return false;
  }
}

/// What the system wants.
bool AssistantWindow::handle_system_message(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_GETDPISCALEDSIZE:
      *reinterpret_cast<SIZE*>(second) = size_in_resolution(window, view_.dpi(), static_cast<UINT>(first));
      SetWindowLongPtrW(window, DWLP_MSGRESULT, TRUE);
      return true;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = least_track_size(window, least_size);
      return true;
    case WM_SIZE:
      if (first != SIZE_MINIMIZED && is_open_) {
        view_.arrange();
        InvalidateRect(window, nullptr, FALSE);
      }
      return true;
    case WM_DPICHANGED:
      set_frame_icons(window, HIWORD(first));
      view_.change_resolution(HIWORD(first), *reinterpret_cast<const RECT*>(second));
      return true;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
      if (refresh_scheme()) dress_again(window);
      if (refresh_text_scale()) view_.change_text_size();
      return false;
    case WM_ACTIVATE:
      // The viewer of a chart was let before it.
      if (LOWORD(first) != WA_INACTIVE && work_ != nullptr)
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      return false;
    case WM_QUERYENDSESSION:
      SetWindowLongPtrW(window, DWLP_MSGRESULT, may_session_end() ? TRUE : FALSE);
      return true;
    case WM_ENDSESSION:
      // As Cancel, but there is nobody to ask. After this message the process may end at any moment.
      if (first != 0) PostQuitMessage(0);
      return true;
    case WM_DESTROY:
      window_ = nullptr;
      PostQuitMessage(0);
      return true;
    default:
      return false;
  }
}

/// On a page, nothing has been written. Work that goes on is brought to its end first.
bool AssistantWindow::may_session_end() const {
  if (work_ == nullptr || !work_->is_working()) return true;
  work_->end_soon();
  return false;
}

}  // namespace wizard::win32
