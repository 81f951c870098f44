// Openings of encrypted files prepared ahead: their salts are read, and their keys derived, before their turn.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "database/engine/embedded/keys_ahead.h"
#include "database/engine/engine.h"

namespace engine::embedded {

class EmbeddedOpenings : public OpeningsAhead {
 public:
  explicit EmbeddedOpenings(std::string_view password) : password_(password), keys_(password) {}
  ~EmbeddedOpenings() override { wipe_memory(password_.data(), password_.size()); }
  EmbeddedOpenings(const EmbeddedOpenings&) = delete;
  EmbeddedOpenings& operator=(const EmbeddedOpenings&) = delete;

  bool has_room() const override { return announced_.size() < KeysAhead::most_expected(); }
  void announce(std::string_view path) override;
  void pass() override;

 private:
  /// The salt of a file whose key is still to be derived.
  std::optional<FileSalt> new_salt_of(std::string_view path) const;

  std::string password_;
  KeysAhead keys_;
  std::deque<std::optional<FileSalt>> announced_;
};

}  // namespace engine::embedded
