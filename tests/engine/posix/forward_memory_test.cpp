// The memory of a long result: all of its rows if one can move back in it, nearly nothing if one cannot. And the memory
// of a file's pages.
#include <malloc.h>
#include <unistd.h>

#include <fstream>

#include "tests/engine/test_database.h"

#ifdef FIRSTSTEPS_SANITIZED
// The sanitizer has an allocator of its own, about which the C library's functions know nothing. It is
// declared here, since not every compiler has its header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace engine::test {
namespace {

std::size_t bytes_in_use() {
#ifdef FIRSTSTEPS_SANITIZED
  return __sanitizer_get_current_allocated_bytes();
#else
  const struct mallinfo2 in_use = mallinfo2();
  return in_use.uordblks + in_use.hblkhd;
#endif
}

class ForwardMemory : public EngineTest {
 protected:
  static constexpr int table_rows = 40, result_rows = table_rows * table_rows * table_rows;

  ForwardMemory() : database_(create()) {
    add_things(*database_);
    add_rows(*database_, table_rows);
  }
  std::unique_ptr<Recordset> open(bool forward) {
    const std::string_view many = "SELECT a.id, b.name, c.amount FROM things AS a, things AS b, things AS c";
    return forward ? database_->open_forward_only(many) : database_->open_recordset(many);
  }

  std::unique_ptr<Database> database_;
};

TEST_F(ForwardMemory, GrowsOnlyWithRowsThatOneCanGoBackTo) {
  struct Case {
    bool forward;
    std::size_t least, most;
  };
  for (const Case& row : {Case{false, 2'000'000, 20'000'000}, Case{true, 0, 200'000}}) {
    const auto rows = open(row.forward);
    const std::size_t before = bytes_in_use();
    int count = 1;
    std::size_t grown = 0;
    for (; count < result_rows; ++count) rows->move_next();
    grown = bytes_in_use() - std::min(bytes_in_use(), before);
    EXPECT_FALSE(rows->eof());
    EXPECT_GE(grown, row.least) << "forward: " << row.forward;
    EXPECT_LE(grown, row.most) << "forward: " << row.forward;
    rows->move_next();
    EXPECT_TRUE(rows->eof());
  }
}

TEST_F(ForwardMemory, RefusesEveryOtherMoveAndEveryChange) {
  const auto rows = open(true);
  for (const auto& move : {&Recordset::move_first, &Recordset::move_last, &Recordset::move_previous}) {
    EXPECT_EQ(error_number([&] { (*rows.*move)(); }), 3219);
  }
  for (const auto& change : {&Recordset::add_new, &Recordset::edit, &Recordset::delete_row}) {
    EXPECT_EQ(error_number([&] { (*rows.*change)(); }), 3027);
  }
  EXPECT_FALSE(rows->updatable());
  EXPECT_EQ(error_number([&] { rows->value("none"); }), 3265);
  EXPECT_EQ(error_number([&] { rows->value(3); }), 3265);
}

#ifndef FIRSTSTEPS_SANITIZED  // A sanitizer keeps freed memory.
std::int64_t resident_bytes() {
  std::int64_t all = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> all >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

using PageMemory = EngineTest;

TEST_F(PageMemory, OfALargeFileGoesBackToTheSystemWhenTheFileIsClosed) {
  constexpr std::int64_t pages_bytes = 48 << 20, tolerance = 8 << 20;
  add_things(*create());
  sqlite(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 12000) "
      "INSERT INTO things(id, note) SELECT i, hex(randomblob(1900)) FROM n");
  for (int time = 0; time < 2; ++time) {
    // What earlier tests have freed and the library has kept would be used again.
    malloc_trim(0);
    const std::int64_t before = resident_bytes();
    auto database = open();
    for (const int again : {0, 1}) {
      const auto sum = database->open_recordset("SELECT count(*) AS n, sum(len(note)) AS c FROM things");
      EXPECT_EQ(to_int32(sum->value("n")), 12000);
      EXPECT_EQ(to_double(sum->value("c")), 12000 * 3800.0);
      EXPECT_NEAR(static_cast<double>(resident_bytes() - before), static_cast<double>(pages_bytes), tolerance) << again;
    }
    database.reset();
    EXPECT_LT(resident_bytes() - before, tolerance);
  }
}
#endif

}  // namespace
}  // namespace engine::test
