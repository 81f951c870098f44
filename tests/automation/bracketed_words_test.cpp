#include "database/engine/automation/bracketed_words.h"

#include <gtest/gtest.h>

namespace engine::automation {
namespace {

TEST(BracketedWords, AreNamesOnlyWhereANameStands) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"SELECT * FROM index WHERE id=3", "SELECT * FROM [index] WHERE id=3"},
      {"DELETE * FROM INDEX WHERE id IN (1,2)", "DELETE * FROM [INDEX] WHERE id IN (1,2)"},
      {"UPDATE index set flag=0", "UPDATE [index] set flag=0"},
      {"SELECT * FROM t ORDER BY vdate DESC", "SELECT * FROM t ORDER BY vdate DESC"},
      {"SELECT * FROM t ORDER BY vdate+vtime DESC, amount desc",
       "SELECT * FROM t ORDER BY vdate+vtime DESC, amount desc"},
      {"SELECT * FROM t ORDER BY [a b] desc,'x' DESC", "SELECT * FROM t ORDER BY [a b] desc,'x' DESC"},
      {"SELECT * FROM t ORDER BY desc DESC", "SELECT * FROM t ORDER BY [desc] DESC"},
      {"SELECT desc, t.desc FROM t WHERE len(desc) >0 AND (desc<>'-1' or amount=0)",
       "SELECT [desc], t.[desc] FROM t WHERE len([desc]) >0 AND ([desc]<>'-1' or amount=0)"},
      {"UPDATE INSULINPUMP set [desc]=str(val(desc)*60) WHERE desc<>''",
       "UPDATE INSULINPUMP set [desc]=str(val([desc])*60) WHERE [desc]<>''"},
      {"SELECT 'from index where desc' FROM t WHERE a=#1/2/2003#",
       "SELECT 'from index where desc' FROM t WHERE a=#1/2/2003#"},
      {"CREATE UNIQUE INDEX desc_index ON t (a DESC)", "CREATE UNIQUE INDEX desc_index ON t (a DESC)"},
      {"DROP INDEX a ON t", "DROP INDEX a ON t"},
      {"SELECT 'ends without its quote", "SELECT 'ends without its quote"},
      {"", ""},
  };
  for (const auto& [statement, bracketed] : cases) EXPECT_EQ(with_bracketed_words(statement), bracketed);
}

}  // namespace
}  // namespace engine::automation
