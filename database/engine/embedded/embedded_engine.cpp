#include "database/engine/embedded/embedded_engine.h"

#include "database/engine/embedded/embedded_database.h"
#include "database/engine/embedded/keys_ahead.h"
#include "support/encoding.h"
#include "support/file_system.h"

namespace engine::embedded {
namespace {

/// What follows "pwd=" in a connect string, to its end.
std::string_view password_of(std::string_view connect) {
  constexpr std::string_view key = "pwd=";
  const std::size_t place = support::find_ignoring_case(connect, key);
  return place == std::string_view::npos ? std::string_view{} : connect.substr(place + key.size());
}

class EmbeddedEngine : public Engine {
 public:
  explicit EmbeddedEngine(std::chrono::milliseconds busy_time) : busy_time_(busy_time) {}

  std::unique_ptr<Database> create_database(std::string_view path, std::string_view, std::int32_t) override {
    const std::string host_path = support::host_file_system().host_path(path);
    return std::make_unique<EmbeddedDatabase>(path, Session::create(host_path, {.busy_time = busy_time_}));
  }

  std::unique_ptr<Database> open_database(std::string_view path, bool exclusive, bool read_only,
                                          std::string_view connect) override {
    const std::string host_path = support::host_file_system().host_path(path);
    const ConnectionOptions options{.read_only = read_only, .exclusive = exclusive, .busy_time = busy_time_};
    return std::make_unique<EmbeddedDatabase>(path, Session::open(host_path, password_of(connect), options));
  }

  std::unique_ptr<OpeningsAhead> openings_ahead(std::string_view connect) override {
    return std::make_unique<EmbeddedOpenings>(password_of(connect));
  }

 private:
  std::chrono::milliseconds busy_time_;
};

}  // namespace

std::unique_ptr<Engine> create_embedded_engine(std::chrono::milliseconds busy_time) {
  return std::make_unique<EmbeddedEngine>(busy_time);
}

}  // namespace engine::embedded
