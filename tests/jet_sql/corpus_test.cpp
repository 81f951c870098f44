#include "tests/jet_sql/corpus.h"

#include <gtest/gtest.h>

#include "support/user_locale.h"
#include "tests/jet_sql/sql_database.h"

namespace jet_sql_test {
namespace {

void seed(SqlDatabase& database) {
  for (const CorpusBlock& block : read_corpus("seed.txt")) {
    for (const CorpusEntry& entry : block) {
      if (entry.statement.empty()) {
        database.allow_empty_texts(entry.empty_texts_of);
      } else {
        database.run(entry.statement);
      }
    }
  }
}

void expect_answer(SqlDatabase& database, const CorpusEntry& entry) {
  SCOPED_TRACE("line " + std::to_string(entry.line) + ": " + entry.statement);
  try {
    const Answer answer = database.run(entry.statement);
    EXPECT_EQ(0, entry.error) << "it succeeded";
    EXPECT_EQ(entry.rows, answer.rows);
    if (!entry.columns.empty()) {
      EXPECT_EQ(entry.columns, answer.columns);
    }
  } catch (const support::RuntimeError& error) {
    EXPECT_EQ(entry.error, error.number()) << error.what();
    EXPECT_NE(std::string::npos, std::string(error.what()).find(entry.error_text)) << error.what();
  } catch (const std::logic_error& error) {
    ADD_FAILURE() << error.what();
  }
}

class Corpus : public testing::TestWithParam<const char*> {};

TEST_P(Corpus, GivesWhatItSays) {
  support::set_user_locale(*support::user_locale_by_name("de"));
  SqlDatabase database;
  seed(database);
  for (const CorpusBlock& block : read_corpus(std::string(GetParam()) + ".txt")) {
    database.sqlite("SAVEPOINT block");
    for (const CorpusEntry& entry : block) expect_answer(database, entry);
    database.sqlite("ROLLBACK TO block; RELEASE block");
  }
}

INSTANTIATE_TEST_SUITE_P(Files, Corpus,
                         testing::Values("issued", "queries", "crosstabs", "unions", "everyday", "expressions",
                                         "functions", "changes", "definitions", "refused"),
                         [](const auto& file) { return std::string(file.param); });

}  // namespace
}  // namespace jet_sql_test
