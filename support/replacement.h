// A file put in the place of another, whatever the system's call leaves where it fails.
#pragma once

#include <string>

namespace support {

/// The system's calls, by host path.
class ReplacementCalls {
 public:
  virtual ~ReplacementCalls() = default;
  /// One file in the place of the other. Where it fails, the other may be there or not.
  virtual bool replace(const std::string& source, const std::string& target) = 0;
  /// False where `target` exists.
  virtual bool rename(const std::string& source, const std::string& target) = 0;
  virtual bool exists(const std::string& path) const = 0;
  virtual void remove(const std::string& path) = 0;
};

enum class Replaced {
  Done,
  Refused,     ///< the target is as it was, the source is gone
  OnlySource,  ///< the target is gone, and the source, which could not take its name, is what there is
};

/// `source` takes the name of `target`, which may be missing. Never removes the source while the target is missing.
Replaced put_in_place(ReplacementCalls& calls, const std::string& source, const std::string& target);

}  // namespace support
