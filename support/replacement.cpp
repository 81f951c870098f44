#include "support/replacement.h"

namespace support {

Replaced put_in_place(ReplacementCalls& calls, const std::string& source, const std::string& target) {
  const bool existed = calls.exists(target);
  if (existed ? calls.replace(source, target) : calls.rename(source, target)) return Replaced::Done;
  if (existed && !calls.exists(target)) {
    return calls.rename(source, target) ? Replaced::Done : Replaced::OnlySource;
  }
  calls.remove(source);
  return Replaced::Refused;
}

}  // namespace support
