// The test server's library, which lies beside this program, and what it says about its objects.
#pragma once

#include <string>

namespace automation_test {

std::wstring server_path();

/// Sets whether the server does what real objects may do beyond their documentation. Off at first.
void set_strict(bool strict);

/// The server's next new database gets the first salt again.
void repeat_server_salts();

/// Objects of the server that were not released.
long living_objects();

/// The kinds of the objects released so far, in their order, each followed by a blank.
std::wstring released_objects();

}  // namespace automation_test
