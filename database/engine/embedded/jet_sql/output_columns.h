// The columns that a SELECT and a union give, and what rows that are grouped may show.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"

namespace engine::embedded::jet_sql {

/// From the items of the list, which are bound: stars become the columns of their sources, and every column has a name.
void collect_outputs(Select& select);

/// Adds a column for each heading of a crosstab, behind those of its rows: these headings, then those of its own list.
void add_headings(Select& select, std::vector<std::optional<std::string>> headings);

/// The columns of a union: the first member's names, types that hold what every member gives.
void unite_outputs(QueryTree& query);

/// True where the item is the ordinal number or the name of one of these columns, which is noted in it. 3138 for a
/// number that none has.
bool is_output(OrderItem& item, const std::vector<OutputColumn>& outputs);

/// Raises 3122 where a column stands neither in an aggregate nor in an expression that the rows are grouped by.
void check_grouping(const Select& select, const QueryTree& query);

}  // namespace engine::embedded::jet_sql
