#include "tests/support/trash.h"

namespace support::testing {

// On Windows, the recycle bin is the user's own, and the system's calls are responsible for it; the test does not look
// into it.
Trash::Trash(const TemporaryFolder& folder) : folder_(folder) {}
Trash::~Trash() = default;
void Trash::expect_file(std::string_view /*name*/, std::string_view /*content*/) const {}

}  // namespace support::testing
