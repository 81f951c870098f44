#include "support/yield_to_input.h"

namespace support {

void YieldToInput() {}

}  // namespace support
