// The columns that a SELECT or a union gives, and the check of what grouped rows may show.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"

namespace engine::embedded::jet_sql {

/// Makes the columns from the items of the list, which are bound. Stars become the columns of their sources, and every
/// column gets a name.
void collect_outputs(Select& select);

/// Adds a column for each heading of a crosstab, behind the columns of its rows: first these headings, then those that
/// the statement lists.
void add_headings(Select& select, std::vector<std::optional<std::string>> headings);

/// The columns of a union: the first member's names, with types that hold what every member gives.
void unite_outputs(QueryTree& query);

/// True where the item is the ordinal number or the name of one of these columns; the column is then noted in the item.
/// Raises 3138 for a number that no column has.
bool is_output(OrderItem& item, const std::vector<OutputColumn>& outputs);

/// Raises 3122 where a column stands neither in an aggregate nor in an expression by which the rows are grouped.
void check_grouping(const Select& select, const QueryTree& query);

}  // namespace engine::embedded::jet_sql
