// The messages that wait for the windows of this thread, for work that takes long.
#pragma once

namespace support {

/// Answers each of them. What ends the program is left to the window's own loop. Does nothing without a window.
void answer_waiting_messages();

}  // namespace support
