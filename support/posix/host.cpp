#include "support/host.h"

namespace support {

UserLocale host_locale() { return {}; }

void YieldToInput() {}

}  // namespace support
