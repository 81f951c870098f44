// The place in a statement that is being read: its tokens, the clause for which an error is reported, and the depth of
// the tree there. Nesting is bounded, so any text is safe.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/jet_sql/token.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

/// How many levels a tree may have. SQLite takes 1000; one level here needs at most four of them.
inline constexpr int max_tree_height = 150;

class TokenCursor {
 public:
  explicit TokenCursor(std::string_view statement);

  /// Counts the levels of recursion. Raises 3360 where there are too many.
  class Level {
   public:
    explicit Level(TokenCursor& cursor);
    ~Level() { --depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    int& depth_;
  };

  const Token& peek(std::size_t ahead = 0) const noexcept;
  Token take();
  /// Precondition: as many tokens remain.
  void skip(std::size_t tokens) noexcept { position_ += tokens; }
  bool at_word(std::string_view keyword, std::size_t ahead = 0) const noexcept;
  bool at_name(std::size_t ahead = 0) const noexcept;
  bool accept_word(std::string_view keyword);
  bool accept_symbol(std::string_view symbol);

  void expect_word(std::string_view keyword);
  void expect_symbol(std::string_view symbol);
  /// Takes a name, which may be quoted. A reserved word is no name.
  std::string expect_name();
  /// Takes a name after "." or AS, where every word is a name.
  std::string expect_any_name();
  /// Takes the names in parentheses. Table names and sort orders are read and ignored.
  std::vector<std::string> expect_names();
  void expect_end();

  /// Raises the number of the clause that is being read, with the place.
  [[noreturn]] void fail_here() const;
  error_number::Number clause() const noexcept { return clause_; }
  void set_clause(error_number::Number clause) noexcept { clause_ = clause; }
  error_number::Number exchange_clause(error_number::Number clause) noexcept { return std::exchange(clause_, clause); }

  /// The statement's text from `begin` to the end of the last token that was taken.
  std::string text_since(std::size_t begin) const;

 private:
  std::string statement_;
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
  error_number::Number clause_ = error_number::none;
  int depth_ = 0;
};

}  // namespace engine::embedded::jet_sql
