#include "support/yield_to_input.h"

#include <windows.h>

namespace support {

void YieldToInput() {
  if (GetInputState() == 0) return;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {
      // Not ours to take: the window's own loop ends by it.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace support
