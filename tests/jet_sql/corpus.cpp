#include "tests/jet_sql/corpus.h"

#include <fstream>
#include <stdexcept>

namespace jet_sql_test {

namespace {

void read_line(const std::string& line, int number, CorpusBlock& block) {
  const std::string content = line.size() > 2 ? line.substr(2) : std::string();
  if (line.starts_with("> ")) {
    block.push_back(
        {.statement = content, .line = number, .columns = {}, .rows = {}, .error_text = {}, .empty_texts_of = {}});
  } else if (line.starts_with("@ ")) {
    block.push_back(
        {.statement = {}, .line = number, .columns = {}, .rows = {}, .error_text = {}, .empty_texts_of = content});
  } else if (block.empty()) {
    throw std::runtime_error("line " + std::to_string(number) + " answers no statement");
  } else if (line.starts_with(": ")) {
    block.back().columns = content;
  } else if (line.starts_with("! ")) {
    std::size_t number_end = 0;
    block.back().error = std::stoi(content, &number_end);
    if (number_end < content.size()) block.back().error_text = content.substr(number_end + 1);
  } else {
    block.back().rows.push_back(line);
  }
}

}  // namespace

std::vector<CorpusBlock> read_corpus(const std::string& file) {
  std::ifstream stream(std::string(TEST_DATA_DIR) + "/sql/" + file, std::ios::binary);
  if (!stream) throw std::runtime_error("no corpus " + file);
  std::vector<CorpusBlock> blocks(1);
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with("#")) continue;
    if (!line.empty()) {
      read_line(line, number, blocks.back());
    } else if (!blocks.back().empty()) {
      blocks.emplace_back();
    }
  }
  if (blocks.back().empty()) blocks.pop_back();
  return blocks;
}

}  // namespace jet_sql_test
