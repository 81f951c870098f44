// Refuses by name what other dialects have and this one does not: raises 3251 if it begins at the cursor.
#pragma once

#include "database/engine/embedded/jet_sql/token_cursor.h"

namespace engine::embedded::jet_sql {

void refuse_statement(const TokenCursor& at);
/// For the place behind a table of a FROM clause, where the word would be taken for an alias.
void refuse_after_table(const TokenCursor& at);
/// For the place behind an expression or a table, where a clause could begin.
void refuse_after_expression(const TokenCursor& at);
/// For the place where an operand begins.
void refuse_operand(const TokenCursor& at);

}  // namespace engine::embedded::jet_sql
