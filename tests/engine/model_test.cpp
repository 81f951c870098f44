#include <chrono>
#include <cstdlib>

#include "database/engine/embedded/embedded_engine.h"
#include "tests/engine/model/play.h"
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

/// A handle that is kept out gives up at once: there is nobody who could make room meanwhile.
class Model : public EngineTest {
 protected:
  Model() : EngineTest(embedded::create_embedded_engine(std::chrono::milliseconds{2})) {}

  /// False, and a failure that tells the seed and the steps, where the engine and the model disagree.
  bool play(unsigned seed) {
    constexpr int steps = 120;
    const std::string file = "m" + std::to_string(seed) + ".das";
    // The second handle knows the file by another name.
    const auto open_file = [&](int name, const std::string& password) {
      return open((name == 0 ? "" : "./") + file, password);
    };
    std::vector<std::string> done;
    try {
      model::Play play{create(file), open_file, seed};
      try {
        for (int step = 0; step < steps; ++step) play.step();
        return true;
      } catch (...) {
        done = play.steps();
        throw;
      }
    } catch (const std::exception& error) {
      std::string list;
      for (const std::string& step : done) list += "\n  " + step;
      ADD_FAILURE() << "PROPERTY_SEED=" << seed << ": " << error.what() << list;
    }
    return false;
  }
};

// PROPERTY_SECONDS: how long new sequences are played, 10 unless given. PROPERTY_SEED: one sequence, once.
TEST_F(Model, AgreesWithTwoHandlesAfterEveryStep) {
  if (const char* const seed = std::getenv("PROPERTY_SEED")) {
    play(static_cast<unsigned>(std::strtoul(seed, nullptr, 10)));
    return;
  }
  const char* const wanted = std::getenv("PROPERTY_SECONDS");
  const std::chrono::seconds time{wanted ? std::atoi(wanted) : 10};
  const auto end = std::chrono::steady_clock::now() + time;
  unsigned seed = std::random_device{}() % 1'000'000;
  int sequences = 0;
  for (; std::chrono::steady_clock::now() < end; ++sequences) {
    if (!play(seed++)) return;
  }
  RecordProperty("sequences", sequences);
  EXPECT_GT(sequences, 0);
}

}  // namespace
}  // namespace engine::test
