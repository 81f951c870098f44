#include "support/win32/waiting_messages.h"

#include <windows.h>

namespace support {

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

}  // namespace support
