// Runs compiled statements that change data or layout.
#pragma once

#include <cstdint>

#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/session.h"

namespace engine::embedded {

/// Call it inside an AtomicChange. Returns the number of rows changed. Raises 3065 for a query.
std::int32_t run_program(Session& session, const jet_sql::Program& program);

}  // namespace engine::embedded
