// fuzz_TARGET FOLDER … [--statements FOLDER]: runs a target on stored inputs, without libFuzzer, so that a fault that
// was found once cannot return unnoticed. Each file of a folder is one input. In the SQL corpora behind --statements,
// each statement ("> …") is one.
#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/target.h"

namespace {

struct Input {
  std::string name;
  std::string bytes;
};

std::string content(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::filesystem::path> files_of(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

void add_statements(const std::filesystem::path& corpus, std::vector<Input>& inputs) {
  std::istringstream lines(content(corpus));
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    if (!line.starts_with("> ")) continue;
    inputs.push_back({corpus.filename().string() + ":" + std::to_string(number), line.substr(2)});
  }
}

}  // namespace

int main(int count, char** words) {
  std::vector<Input> inputs;
  bool statements = false;
  for (const std::string_view word : std::span(words, static_cast<std::size_t>(count)).subspan(1)) {
    if (word == "--statements") {
      statements = true;
      continue;
    }
    for (const std::filesystem::path& path : files_of(word)) {
      if (statements) {
        add_statements(path, inputs);
      } else {
        inputs.push_back({path.filename().string(), content(path)});
      }
    }
  }
  for (const auto& [name, bytes] : inputs) {
    // The name is printed first, so that after a crash the input is known.
    std::printf("%s\n", name.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu inputs replayed\n", inputs.size());
  return inputs.empty() ? 1 : 0;
}
