// A corpus: blocks of statements, each with what it gives. In a file,
//   > SELECT id FROM t        a statement
//   : id Long                 the columns of its result, where they are to be compared
//   1                         its rows, or of a change the number of rows
//   ! 3061                    or the error that it raises; words behind the number are part of the error's text
//   @ t                       allows empty texts in the fields of a table
// Blocks are parted by empty lines; each finds the database as the seed left it. Lines with "#" are remarks.
#pragma once

#include <string>
#include <vector>

namespace jet_sql_test {

struct CorpusEntry {
  std::string statement;
  int line = 0;
  std::string columns;  ///< empty: not compared
  std::vector<std::string> rows;
  int error = 0;
  std::string error_text = {};
  std::string empty_texts_of;  ///< a table; the block has no statement
};

using CorpusBlock = std::vector<CorpusEntry>;

/// Raises std::runtime_error if there is no such file under tests/data/sql.
std::vector<CorpusBlock> read_corpus(const std::string& file);

}  // namespace jet_sql_test
