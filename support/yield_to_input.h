// What long loops call so that the window stays alive meanwhile.
#pragma once

namespace support {

/// Lets pending window messages through where input waits; does nothing without a window.
void YieldToInput();

/// For a wait of some seconds in the midst of work that no message may interrupt: the system does not take the program
/// for hung, and no message is answered. Does nothing in a thread without windows.
void stay_responding();

}  // namespace support
