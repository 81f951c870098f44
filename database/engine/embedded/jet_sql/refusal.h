// What people know from other dialects and this one does not have is refused by its name: 3251 where it begins at the
// cursor.
#pragma once

#include "database/engine/embedded/jet_sql/token_cursor.h"

namespace engine::embedded::jet_sql {

void refuse_statement(const TokenCursor& at);
/// Behind a table of a FROM clause, where the word would be taken for an alias.
void refuse_after_table(const TokenCursor& at);
/// Behind an expression or a table, where a clause could begin.
void refuse_after_expression(const TokenCursor& at);
/// Where an operand begins.
void refuse_operand(const TokenCursor& at);

}  // namespace engine::embedded::jet_sql
