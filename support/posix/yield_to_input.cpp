#include "support/yield_to_input.h"

namespace support {

void YieldToInput() {}

void answer_waiting_messages() {}

void stay_responding() {}

}  // namespace support
