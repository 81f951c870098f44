#include "support/yield_to_input.h"

namespace support {

void YieldToInput() {}

void stay_responding() {}

}  // namespace support
