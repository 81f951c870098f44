#include "apps/patientdb/sql_script.h"

#include <gmock/gmock.h>

namespace {

std::vector<std::string> split(std::string_view script) {
  std::vector<std::string> statements;
  for (const auto& statement : patientdb::split_script(script)) {
    statements.push_back(std::to_string(statement.line) + ":" + statement.text);
  }
  return statements;
}

TEST(SplitScript, CutsAtSemicolonsOutsideOfQuotes) {
  struct Case {
    std::string_view script;
    std::vector<std::string> statements;
  };
  const Case cases[] = {
      {"", {}},
      {" ;\n; ;\n-- only a comment", {}},
      {"a;b ; \r\n\r\nc\r\n", {"1:a", "1:b", "3:c"}},
      {"-- one\n  -- two\nselect 1\n-- between\n+ 2;\n\nx", {"3:select 1\n\n+ 2", "7:x"}},
      {"insert 'a;''b' ; next", {"1:insert 'a;''b'", "1:next"}},
      {"insert \"a;'b\";[c;d'];e", {"1:insert \"a;'b\"", "1:[c;d']", "1:e"}},
      {"insert 'first\n-- no comment;\nlast';x", {"1:insert 'first\n-- no comment;\nlast'", "3:x"}},
      {"select 3--1;x", {"1:select 3--1", "1:x"}},
      {"select #1/2/2024#;x", {"1:select #1/2/2024#", "1:x"}},
      {"insert 'open;\nend", {"1:insert 'open;\nend"}},
      {"parameters [a;b] long;\nselect 1;x", {"1:parameters [a;b] long;\nselect 1", "2:x"}},
      {"parameters_ a;select 1", {"1:parameters_ a", "1:select 1"}},
  };
  for (const Case& row : cases) EXPECT_EQ(split(row.script), row.statements) << row.script;
}

TEST(IsQuery, TellsStatementsThatGiveRows) {
  const std::pair<std::string_view, bool> cases[] = {
      {"SELECT * FROM patdat", true},
      {" \r\n(select id from a) union (select id from b)", true},
      {"select 1", true},
      {"SELECT * INTO [labdefs] FROM [labdefs] IN 'x'", false},
      {"select [into] from t", true},
      {"select 'x into y' from t", true},
      {"select (select a into b from c) from t", true},
      {"TRANSFORM sum(a) SELECT b FROM t GROUP BY b PIVOT c", true},
      {"table a union table b", true},
      {"(SELECT 1 FROM a) UNION (SELECT 2)", true},
      {" PARAMETERS [a;b] LONG;\nSELECT 1", true},
      {"PARAMETERS a LONG; TRANSFORM sum(a) SELECT b FROM t GROUP BY b PIVOT c", true},
      {"PARAMETERS a LONG; UPDATE t SET a = 1", false},
      {"PARAMETERS a LONG;", false},
      {"INSERT INTO t SELECT * FROM s", false},
      {"selection", false},
      {"UPDATE t SET a = 1", false},
      {"", false},
  };
  for (const auto& [statement, expected] : cases) EXPECT_EQ(patientdb::is_query(statement), expected) << statement;
}

}  // namespace
