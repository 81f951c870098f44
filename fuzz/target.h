// What a fuzz target is made of. Each target is a file that defines LLVMFuzzerTestOneInput. libFuzzer calls it with the
// inputs of the corpus and with those that it makes up. The code under test may refuse an input. If a promise is
// broken, the target ends the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view text_of(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Ends the process if the promise is broken, so that the fuzzer keeps the input.
inline void promise(bool kept, std::string_view what) {
  if (kept) return;
  std::fprintf(stderr, "broken promise: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

/// A folder for this process, in memory if the machine has such a place. It is removed when the process ends.
class ScratchFolder {
 public:
  ScratchFolder() {
    const std::filesystem::path memory = "/dev/shm";
    std::error_code ignored;
    const bool usable = std::filesystem::is_directory(memory, ignored);
    folder_ =
        (usable ? memory : std::filesystem::temp_directory_path()) / ("fuzz." + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(folder_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return folder_; }
  void write(const std::string& name, std::string_view bytes) const {
    std::ofstream(folder_ / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace fuzz
