#include "wizard/win32/accessible_control.h"

// These need windows.h before them.
#include <commctrl.h>
#include <oleacc.h>

#include <memory>
#include <utility>

#include "support/win32/system_function.h"
#include "wizard/win32/accessible_object.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR accessible_id = 3;

struct Answer {
  SpokenOf what;
  std::optional<long> role;
};

LRESULT answer_with_object(HWND window, WPARAM flags, const Answer& answer) {
  const Com<IAccessible> object = accessible_object(window, answer.what, answer.role);
  static auto* const result_of =
      support::system_function<decltype(LresultFromObject)>(L"oleacc.dll", "LresultFromObject");
  return object && result_of != nullptr ? result_of(IID_IAccessible, flags, object.get()) : 0;
}

LRESULT CALLBACK accessible_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                                      DWORD_PTR data) {
  auto* answer = reinterpret_cast<Answer*>(data);
  if (message == WM_GETOBJECT && static_cast<LONG>(second) == OBJID_CLIENT) {
    if (const LRESULT object = answer_with_object(window, first, *answer)) return object;
  }
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, accessible_procedure, accessible_id);
    const std::unique_ptr<Answer> end(answer);
    return DefSubclassProc(window, message, first, second);
  }
  return DefSubclassProc(window, message, first, second);
}

}  // namespace

void make_accessible(HWND window, SpokenOf what, std::optional<long> role) {
  auto answer = std::make_unique<Answer>(Answer{std::move(what), role});
  if (SetWindowSubclass(window, accessible_procedure, accessible_id, reinterpret_cast<DWORD_PTR>(answer.get())) != 0)
    static_cast<void>(answer.release());
}

void announce_change(HWND window) {
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
  NotifyWinEvent(EVENT_OBJECT_DESCRIPTIONCHANGE, window, OBJID_CLIENT, CHILDID_SELF);
}

void announce_alert(HWND window) { NotifyWinEvent(EVENT_SYSTEM_ALERT, window, OBJID_CLIENT, CHILDID_SELF); }

}  // namespace wizard::win32
