#include "support/yield_to_input.h"

#include <windows.h>

#include "support/win32/waiting_messages.h"

namespace support {

void YieldToInput() {
  if (GetInputState() != 0) answer_waiting_messages();
}

}  // namespace support
