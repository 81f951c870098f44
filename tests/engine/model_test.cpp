#include <chrono>

#include "database/engine/embedded/embedded_engine.h"
#include "tests/engine/model/play.h"
#include "tests/engine/model/property_run.h"
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

/// A handle that cannot get the lock gives up at once, because nobody could release it meanwhile.
class Model : public EngineTest {
 protected:
  Model() : EngineTest(embedded::create_embedded_engine(std::chrono::milliseconds{2})) {}

  /// If the engine and the model disagree: returns false and reports a failure with the seed and the steps.
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

TEST_F(Model, AgreesWithTwoHandlesAfterEveryStep) {
  RecordProperty("sequences", static_cast<int>(try_seeds(10, [this](unsigned seed) { return play(seed); })));
}

}  // namespace
}  // namespace engine::test
