#include "support/yield_to_input.h"

#include <windows.h>

namespace support {

void YieldToInput() {
  if (GetInputState() != 0) answer_waiting_messages();
}

void answer_waiting_messages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

// A look at the queue is enough for the system. Without PM_QS_PAINT, the call would also deliver what other threads
// have sent.
void stay_responding() {
  MSG message;
  if (IsGUIThread(FALSE) != 0) PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_PAINT);
}

}  // namespace support
