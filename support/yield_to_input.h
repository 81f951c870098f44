// What long loops call so that the window stays alive meanwhile.
#pragma once

namespace support {

/// Lets pending window messages through where input waits; does nothing without a window.
void YieldToInput();

}  // namespace support
