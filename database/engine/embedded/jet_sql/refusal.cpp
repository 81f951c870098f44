#include "database/engine/embedded/jet_sql/refusal.h"

#include <algorithm>
#include <array>

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

void refuse_statement(const TokenCursor& at) {
  const auto* const row =
      std::ranges::find_if(refused_statements, [&](const RefusedWord& refused) { return at.at_word(refused.word); });
  if (row != refused_statements.end()) raise(error_number::not_supported, row->name);
  const bool changes_object = at.at_word("CREATE") || at.at_word("ALTER") || at.at_word("DROP");
  if (changes_object && is_one_of(at.peek(1), refused_objects)) {
    raise(error_number::not_supported, upper_case(at.peek().text) + " " + upper_case(at.peek(1).text));
  }
}

void refuse_after_table(const TokenCursor& at) {
  refuse_after_expression(at);
  if (is_one_of(at.peek(), refused_joins) &&
      (at.at_word("JOIN", 1) || at.at_word("OUTER", 1) || at.at_word("INNER", 1))) {
    raise(error_number::not_supported, upper_case(at.peek().text) + " JOIN");
  }
  if (at.at_word("USING") && at.peek(1).is_symbol("(")) raise(error_number::not_supported, "USING; write ON");
}

void refuse_after_expression(const TokenCursor& at) {
  if (at.at_word("LIMIT") && at.peek(1).kind == TokenKind::Number)
    raise(error_number::not_supported, "LIMIT; write TOP");
  if (at.at_word("WITH") && at.at_word("OWNERACCESS", 1)) raise(error_number::not_supported, "WITH OWNERACCESS OPTION");
  const bool unites =
      at.at_word("SELECT", 1) || (at.at_word("ALL", 1) && at.at_word("SELECT", 2)) || at.peek(1).is_symbol("(");
  if (unites && is_one_of(at.peek(), refused_unions)) raise(error_number::not_supported, upper_case(at.peek().text));
}

void refuse_operand(const TokenCursor& at) {
  if (at.at_word("CASE") && (at.at_word("WHEN", 1) || at.at_word("WHEN", 2))) {
    raise(error_number::not_supported, "CASE; write IIf or Switch");
  }
  if (at.at_word("CAST") && at.peek(1).is_symbol("(")) {
    raise(error_number::not_supported, "CAST; write CLng, CDbl, CStr, CDate or another function of this kind");
  }
}

}  // namespace engine::embedded::jet_sql
