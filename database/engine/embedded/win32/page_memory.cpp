#include "database/engine/embedded/page_memory.h"

namespace engine::embedded {

void keep_pages_together() noexcept {}

}  // namespace engine::embedded
