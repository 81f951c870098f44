// Two handles on one file and random steps on them. Each step is also done in the model. After every step, both must
// agree; otherwise Disagreement is thrown. The steps depend on the seed alone.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/engine/model/plain_table.h"

namespace engine::test::model {

struct Disagreement : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Opens the file under one of its two names.
using OpenFile = std::function<std::unique_ptr<Database>(int name, const std::string& password)>;

class Play {
 public:
  /// `first` is the new file's handle.
  Play(std::unique_ptr<Database> first, OpenFile open_file, unsigned seed);

  void step();
  /// The steps so far, one line each.
  const std::vector<std::string>& steps() const noexcept { return steps_; }

 private:
  /// A query that fails at one row, and how far it has been read.
  struct FailingQuery {
    std::unique_ptr<Recordset> rows;
    int table = 0;                      ///< the identity of the table that it reads
    std::vector<std::int32_t> numbers;  ///< those before the failing row
    std::size_t at = 0;
    bool fails = false;
  };

  struct Hand {
    int name = 0;
    std::unique_ptr<Database> database;
    std::optional<PlainTable> changed;  ///< the table as the open transaction made it
    std::shared_ptr<TableDef> definition;
    int defined_table = 0;
    std::unique_ptr<Recordset> rows;
    std::optional<PlainRecordset> shown;
    bool shows_whole_table = false;
    FailingQuery failing;
    std::set<std::int32_t> numbers;  ///< AutoNumbers that this handle gave, also where it was rolled back
    int numbers_of = 0;
  };

  enum class Lock { NotNeeded, MayBeNeeded, Needed };

  struct Kind {
    int weight;
    const char* name;
    void (Play::*play)(Hand&);
  };
  static const std::vector<Kind>& kinds();

  // Random choices
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool one_in(int count) { return below(count) == 0; }
  Value any_value(const PlainField& field);
  void note(const std::string& text) { steps_.back() += " " + text; }

  // Comparing calls with the model
  PlainTable& table(Hand& hand) { return hand.changed ? *hand.changed : committed_; }
  Hand& other(const Hand& hand) { return hands_[hand.name == 0 ? 1 : 0]; }
  /// Calls the engine. True if it succeeded as expected, false if it refused as expected. A call that needs the lock is
  /// refused as long as the other handle has it.
  bool call(Hand& hand, const Errors& allowed, Lock lock, const std::function<void()>& engine_call);
  [[noreturn]] void disagree(const std::string& what) const;
  void expect(bool holds, const std::string& what) const;
  void open_hand(Hand& hand);
  void end_transaction(Hand& hand, bool committed);
  void take_number(Hand& hand, std::int32_t number);
  Errors errors_of_update(Hand& hand);
  void finish_update(Hand& hand);

  // Comparing what both show
  void compare(Hand& hand);
  void compare_rows(Hand& hand);
  void compare_recordset(Hand& hand);
  void compare_definition(Hand& hand);
  void compare_values(const Recordset& rows, const std::string& name, const Value& expected, const char* where) const;

  // Steps on recordsets
  void open_recordset(Hand& hand);
  void close_recordset(Hand& hand);
  void move(Hand& hand);
  void add(Hand& hand);
  void edit(Hand& hand);
  void set_values(Hand& hand);
  void update(Hand& hand);
  void delete_row(Hand& hand);
  void open_failing(Hand& hand);
  void read_failing(Hand& hand);

  // Steps on the file
  void begin(Hand& hand);
  void commit(Hand& hand);
  void roll_back(Hand& hand);
  void close_and_open(Hand& hand);
  void change_password(Hand& hand);

  // Statements
  void insert(Hand& hand);
  void append(Hand& hand);
  void append_many(Hand& hand);
  void update_rows(Hand& hand);
  void delete_rows(Hand& hand);

  // Changes of the layout
  void change_rule(Hand& hand);
  void change_extra_field(Hand& hand);
  void change_numbering(Hand& hand);
  void change_property(Hand& hand);
  void replace_table(Hand& hand);

  OpenFile open_file_;
  std::mt19937 random_;
  std::array<Hand, 2> hands_;
  PlainTable committed_;
  std::string password_;
  std::vector<std::string> steps_;
};

}  // namespace engine::test::model
