// What long loops call so that the window stays alive meanwhile.
#pragma once

namespace support {

/// Lets pending window messages through where input waits; does nothing without a window.
void YieldToInput();

/// Answers the messages that wait for the windows of this thread. A message that ends the program is left to the
/// window's own loop. Does nothing without a window.
void answer_waiting_messages();

/// For a wait of some seconds in the midst of work that no message may interrupt: the system does not take the program
/// for hung, and no message is answered. Does nothing in a thread without windows.
void stay_responding();

}  // namespace support
