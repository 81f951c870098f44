// The tables by subject, as schema.cpp gathers them. A file a subject; the order within it does not count.
#pragma once

#include <span>

#include "database/schema/schema.h"

namespace database::schema {

std::span<const TableRow> measurement_tables();
std::span<const TableRow> patient_tables();
std::span<const TableRow> reference_tables();
std::span<const TableRow> plan_tables();

}  // namespace database::schema
