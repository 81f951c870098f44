#include "support/yield_to_input.h"

#include <windows.h>

#include "support/win32/waiting_messages.h"

namespace support {

void YieldToInput() {
  if (GetInputState() != 0) answer_waiting_messages();
}

// A look at the queue is what the system counts. Without the flag it would also hand on what other threads have sent.
void stay_responding() {
  MSG message;
  if (IsGUIThread(FALSE) != 0) PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_PAINT);
}

}  // namespace support
