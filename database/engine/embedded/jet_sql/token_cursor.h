// The place in a statement that is being read: its tokens, the clause that an error is reported for, and how deep the
// tree is there. Nesting is bounded, so any text is safe.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/jet_sql/token.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

/// Levels that a tree may have; SQLite takes 1000, of which a level here needs at most four.
inline constexpr int max_tree_height = 150;

class TokenCursor {
 public:
  explicit TokenCursor(std::string_view statement);

  /// Counts the levels of recursion; raises 3360 where there are too many.
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
  /// Precondition: as many tokens are left.
  void skip(std::size_t tokens) noexcept { position_ += tokens; }
  bool at_word(std::string_view keyword, std::size_t ahead = 0) const noexcept;
  bool at_name(std::size_t ahead = 0) const noexcept;
  bool accept_word(std::string_view keyword);
  bool accept_symbol(std::string_view symbol);

  void expect_word(std::string_view keyword);
  void expect_symbol(std::string_view symbol);
  /// A name that may be quoted; a word that is reserved is none.
  std::string expect_name();
  /// A name after "." or AS, where every word is one.
  std::string expect_any_name();
  /// Names in parentheses; a table's name and an order are taken and left aside.
  std::vector<std::string> expect_names();
  void expect_end();

  /// Raises the number of the clause that is being read, with the place.
  [[noreturn]] void fail_here() const;
  error_number::Number clause() const noexcept { return clause_; }
  void set_clause(error_number::Number clause) noexcept { clause_ = clause; }
  error_number::Number exchange_clause(error_number::Number clause) noexcept { return std::exchange(clause_, clause); }

  /// The statement's text from there to the end of the last token taken.
  std::string text_since(std::size_t begin) const;

 private:
  std::string statement_;
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
  error_number::Number clause_ = error_number::none;
  int depth_ = 0;
};

}  // namespace engine::embedded::jet_sql
