// From tokens to the syntax tree: recursive descent, with precedence climbing for expressions. Nesting is bounded, so
// any text is safe. Every failure is a RuntimeError with the number of the clause that the parser was in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/token.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

/// Levels that a tree may have; SQLite takes 1000, of which a level here needs at most four.
inline constexpr int max_tree_height = 150;

class Parser {
 public:
  explicit Parser(std::string_view statement);

  /// The statement, which must be all of the text but a ";" at its end.
  Statement parse_statement();
  /// The names that the statement's PARAMETERS clause declares.
  const std::vector<std::string>& parameters() const noexcept { return parameters_; }
  /// An expression that is all of the text; a "=" may stand before it.
  ExpressionPtr parse_lone_expression();
  /// A condition that is all of the text. A comparison, LIKE, BETWEEN, IN or IS with nothing before it speaks of the
  /// field.
  ExpressionPtr parse_rule(std::string_view field);

 private:
  /// Counts the levels of recursion.
  class Level {
   public:
    explicit Level(int& depth);
    ~Level() { --depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    int& depth_;
  };

  // Cursor
  const Token& peek(std::size_t ahead = 0) const noexcept;
  Token take();
  bool at_word(std::string_view keyword, std::size_t ahead = 0) const noexcept;
  bool accept_word(std::string_view keyword);
  bool accept_symbol(std::string_view symbol);
  void expect_word(std::string_view keyword);
  void expect_symbol(std::string_view symbol);
  /// Raises the number of the clause that is being read, with the place.
  [[noreturn]] void fail_here() const;
  /// Raises 3251 with the name of what other dialects know and this one does not, where it begins here.
  void refuse_statement() const;
  void refuse_after_table() const;
  void refuse_after_expression() const;
  void refuse_operand() const;
  bool at_name(std::size_t ahead = 0) const noexcept;
  /// A name that may be quoted; a word that is reserved is none.
  std::string expect_name();
  /// A name after "." or AS, where every word is one.
  std::string expect_any_name();
  void expect_end();

  // Expressions (parser_expression.cpp)
  ExpressionPtr parse_expression();
  ExpressionPtr parse_binary(int lowest_precedence);
  ExpressionPtr parse_prefix();
  ExpressionPtr parse_minus();
  ExpressionPtr parse_primary();
  ExpressionPtr parse_prefixed_number();
  ExpressionPtr parse_word();
  ExpressionPtr parse_call();
  ExpressionPtr parse_column();
  ExpressionPtr parse_parenthesis();
  bool at_quantifier() const noexcept;
  ExpressionPtr parse_quantified(BinaryOperator op, ExpressionPtr value);
  bool at_predicate() const noexcept;
  bool lacks_field(int lowest_precedence) const noexcept;
  ExpressionPtr parse_predicate(ExpressionPtr value);
  ExpressionPtr parse_between(ExpressionPtr value, bool negated);
  ExpressionPtr parse_in(ExpressionPtr value, bool negated);
  std::vector<ExpressionPtr> parse_list();

  // Queries (parser_query.cpp)
  /// True for a SELECT, and for a parenthesis that begins a union.
  bool at_query(std::size_t ahead = 0) const noexcept;
  std::size_t behind_parenthesis(std::size_t ahead) const noexcept;
  QueryPtr parse_query(SelectStatement* into);
  std::unique_ptr<Select> parse_member(SelectStatement* into);
  std::unique_ptr<Select> parse_whole_table();
  std::unique_ptr<Select> parse_select(SelectStatement* into);
  SelectStatement parse_transform();
  void parse_pivot(Pivot& pivot);
  void parse_predicates(Select& select);
  void parse_items(Select& select);
  SelectItem parse_item();
  void parse_into(SelectStatement& statement);
  void parse_external(SelectStatement* statement);
  void parse_groups(Select& select);
  std::vector<OrderItem> parse_order_by();
  std::vector<TableReferencePtr> parse_from();
  TableReferencePtr parse_joins();
  TableReferencePtr parse_table();
  bool accept_join(JoinKind& kind);

  // Statements that change rows (parser_change.cpp)
  InsertStatement parse_insert();
  UpdateStatement parse_update();
  DeleteStatement parse_delete();

  // Statements that change the layout (parser_definition.cpp)
  Statement parse_layout_change();
  Statement parse_create();
  Statement parse_alter();
  Statement parse_drop();
  void parse_parameters();
  CreateTable parse_create_table();
  CreateIndex parse_create_index(bool unique);
  void parse_index_option(IndexDefinition& index);
  FieldDefinition parse_field(std::vector<IndexDefinition>& indexes);
  FieldDefinition parse_typed_field();
  void parse_field_size(FieldDefinition& field);
  void parse_field_option(FieldDefinition& field, std::vector<IndexDefinition>& indexes);
  void parse_default(FieldDefinition& field);
  bool at_constraint() const noexcept;
  IndexDefinition parse_constraint();
  std::vector<std::string> parse_names();

  std::string statement_;
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
  /// Number of the clause that is being read.
  error_number::Number clause_ = error_number::none;
  int depth_ = 0;
  int select_depth_ = 0;
  bool transforms_ = false;
  bool pivots_ = false;
  /// The field that conditions of a rule speak of; empty elsewhere.
  std::string implied_field_;
  std::vector<std::string> parameters_;
};

}  // namespace engine::embedded::jet_sql
