// What people know from other dialects and this one does not have is refused by its name.
#include <algorithm>
#include <array>

#include "database/engine/embedded/jet_sql/parser.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

struct RefusedWord {
  std::string_view word;
  std::string_view name;
};

constexpr auto refused_statements = std::to_array<RefusedWord>({
    {"BEGIN", "a transaction by statements"},
    {"COMMIT", "a transaction by statements"},
    {"EXEC", "EXECUTE"},
    {"EXECUTE", "EXECUTE"},
    {"GRANT", "GRANT"},
    {"MERGE", "MERGE"},
    {"PROCEDURE", "PROCEDURE"},
    {"REPLACE", "REPLACE"},
    {"REVOKE", "REVOKE"},
    {"ROLLBACK", "a transaction by statements"},
    {"TRUNCATE", "TRUNCATE; DELETE FROM does it"},
    {"WITH", "WITH before a SELECT"},
});

constexpr auto refused_objects = std::to_array<std::string_view>(
    {"DATABASE", "FUNCTION", "GROUP", "PROC", "PROCEDURE", "TEMPORARY", "TRIGGER", "USER", "VIEW"});

constexpr auto refused_joins = std::to_array<std::string_view>({"CROSS", "FULL", "NATURAL"});
constexpr auto refused_unions = std::to_array<std::string_view>({"EXCEPT", "INTERSECT", "MINUS"});

std::string upper_case(std::string_view text) {
  std::string upper(text);
  for (char& character : upper) {
    if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  }
  return upper;
}

template <typename Words>
bool is_one_of(const Token& token, const Words& words) {
  return std::ranges::any_of(words, [&](std::string_view word) { return token.is_word(word); });
}

}  // namespace

void Parser::refuse_statement() const {
  const auto* const row =
      std::ranges::find_if(refused_statements, [this](const RefusedWord& refused) { return at_word(refused.word); });
  if (row != refused_statements.end()) raise(error_number::not_supported, row->name);
  const bool changes_object = at_word("CREATE") || at_word("ALTER") || at_word("DROP");
  if (changes_object && is_one_of(peek(1), refused_objects)) {
    raise(error_number::not_supported, upper_case(peek().text) + " " + upper_case(peek(1).text));
  }
}

/// Behind a table of a FROM clause, where the word would be taken for an alias.
void Parser::refuse_after_table() const {
  refuse_after_expression();
  if (is_one_of(peek(), refused_joins) && (at_word("JOIN", 1) || at_word("OUTER", 1) || at_word("INNER", 1))) {
    raise(error_number::not_supported, upper_case(peek().text) + " JOIN");
  }
  if (at_word("USING") && peek(1).is_symbol("(")) raise(error_number::not_supported, "USING; write ON");
}

/// Behind an expression or a table, where a clause could begin.
void Parser::refuse_after_expression() const {
  if (at_word("LIMIT") && peek(1).kind == TokenKind::Number) raise(error_number::not_supported, "LIMIT; write TOP");
  if (at_word("WITH") && at_word("OWNERACCESS", 1)) raise(error_number::not_supported, "WITH OWNERACCESS OPTION");
  const bool unites = at_word("SELECT", 1) || (at_word("ALL", 1) && at_word("SELECT", 2)) || peek(1).is_symbol("(");
  if (unites && is_one_of(peek(), refused_unions)) raise(error_number::not_supported, upper_case(peek().text));
}

/// Where an operand begins.
void Parser::refuse_operand() const {
  if (at_word("CASE") && (at_word("WHEN", 1) || at_word("WHEN", 2))) {
    raise(error_number::not_supported, "CASE; write IIf or Switch");
  }
  if (at_word("CAST") && peek(1).is_symbol("(")) {
    raise(error_number::not_supported, "CAST; write CLng, CDbl, CStr, CDate or another function of this kind");
  }
}

}  // namespace engine::embedded::jet_sql
