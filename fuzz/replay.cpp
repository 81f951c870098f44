// Runs a target over files and folders of inputs, without libFuzzer: what was found once stays found.
#include <algorithm>
#include <iterator>
#include <vector>

#include "fuzz/target.h"

namespace {

std::vector<std::filesystem::path> inputs(const std::filesystem::path& place) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(place)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int count, char** words) {
  std::size_t runs = 0;
  for (int i = 1; i < count; ++i) {
    for (const std::filesystem::path& path : inputs(words[i])) {
      std::ifstream file(path, std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file), {}};
      // Named first, so that a crash tells its input.
      std::printf("%s\n", path.filename().c_str());
      std::fflush(stdout);
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++runs;
    }
  }
  std::printf("%zu inputs replayed\n", runs);
  return runs > 0 ? 0 : 1;
}
