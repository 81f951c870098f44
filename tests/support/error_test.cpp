#include "support/error.h"

#include <gtest/gtest.h>

#include <new>
#include <vector>

#include "support/error_number.h"

namespace support {
namespace {

TEST(Procedure, LeavesTheLabelOfTheProcedureEnteredLast) {
  {
    Procedure outer("sql!db_WriteDBInfo");
    { Procedure inner("ddg!Field_Create"); }
    EXPECT_EQ(current_procedure_label(), "ddg!Field_Create");
  }
  EXPECT_EQ(current_procedure_label(), "ddg!Field_Create");
}

TEST(Procedure, PassesOverAFailingStatementAndKeepsItsErrorPending) {
  Procedure procedure("sql!test");
  int reached = 0;
  EXPECT_FALSE(procedure.step([&] {
    ++reached;
    throw RuntimeError(3021, "No current record");
  }));
  EXPECT_TRUE(procedure.step([&] { ++reached; }));
  EXPECT_EQ(reached, 2);
  ASSERT_TRUE(procedure.pending());
  EXPECT_EQ(procedure.error().number(), 3021);
  procedure.clear();
  EXPECT_FALSE(procedure.pending());
}

TEST(Procedure, EndsAGuardedBodyAtItsFirstErrorAndGivesForeignErrorsNumbers) {
  Procedure procedure("ddg!test");
  int statements = 0;
  const auto statement = [&statements](bool fails) {
    ++statements;
    if (fails) throw std::logic_error("odd");
  };
  EXPECT_FALSE(procedure.guarded([&] {
    statement(false);
    statement(true);
    statement(false);
  }));
  EXPECT_EQ(statements, 2);
  EXPECT_EQ(procedure.error().number(), 51);
  EXPECT_STREQ(procedure.error().what(), "odd");
  EXPECT_FALSE(procedure.step([] { throw std::bad_alloc(); }));
  EXPECT_EQ(procedure.error().number(), 7);
  EXPECT_FALSE(procedure.step([] { throw 1; }));
  EXPECT_EQ(procedure.error().number(), 51);
}

TEST(ErrorText, NamesAPlaceWhereOneIsKnown) {
  EXPECT_EQ(error_text(error_number::conversion, "Wert"), "Data type conversion error in field 'Wert'.");
  EXPECT_EQ(error_text(error_number::conversion), "Data type conversion error.");
  EXPECT_EQ(error_text(error_number::no_such_index, "a"), "No such index 'a'.");
  EXPECT_EQ(error_text(1), error_text(error_number::internal_error));
}

TEST(Procedure, TellsTheListenerWhatWasPassedOver) {
  std::vector<std::string> told;
  auto before = set_skipped_step_listener([&](std::string_view label, const RuntimeError& error) {
    told.push_back(std::string(label) + " " + std::to_string(error.number()));
  });
  Procedure procedure("code!trim");
  procedure.step([] { throw RuntimeError(13, "Type mismatch"); });
  procedure.step([] {});
  set_skipped_step_listener(before);
  procedure.step([] { throw RuntimeError(13, "Type mismatch"); });
  EXPECT_EQ(told, std::vector<std::string>{"code!trim 13"});
}

TEST(Outcome, HoldsWhatWasPassedOverWithinTheWorkAndAllThatItCalled) {
  const auto fail = [](int number, const char* text) {
    Procedure("inner").step([&] { throw RuntimeError(number, text); });
  };
  const auto disk = [](const RuntimeError& error) { return error.number() >= 3000; };
  Outcome inner;
  fail(3043, "before");
  const Outcome outer = outcome_of([&] {
    fail(13, "one");
    inner = outcome_of([&] {
      fail(3043, "two");
      fail(3043, "three");
    });
    EXPECT_THROW(outcome_of([&] {
                   fail(3045, "four");
                   throw RuntimeError(9, "ended");
                 }),
                 RuntimeError);
    fail(13, "five");
  });
  fail(3044, "after");
  EXPECT_STREQ(inner.first(disk)->what(), "two");
  EXPECT_STREQ(inner.last()->what(), "three");
  EXPECT_STREQ(outer.first(disk)->what(), "two");
  EXPECT_EQ(outer.first([](const RuntimeError& error) { return error.number() > 3043; })->number(), 3045);
  EXPECT_STREQ(outer.last()->what(), "five");
  EXPECT_THROW(outer.raise_first(disk), RuntimeError);
  EXPECT_NO_THROW(inner.raise_first([](const RuntimeError& error) { return error.number() == 13; }));
  EXPECT_FALSE(outcome_of([] { Procedure("inner").step([] {}); }).last());
}

}  // namespace
}  // namespace support
