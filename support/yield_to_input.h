// What long work calls so that the window stays alive meanwhile.
#pragma once

namespace support {

/// Answers the waiting window messages if input is among them. Does nothing without a window.
void YieldToInput();

/// Answers the messages that wait for the windows of this thread. A message that ends the program is left to the
/// window's own loop. Does nothing without a window.
void answer_waiting_messages();

/// For a wait of some seconds within work that no message may interrupt: the system does not take the program for hung,
/// although no message is answered. Does nothing in a thread without windows.
void stay_responding();

}  // namespace support
