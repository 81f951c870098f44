// What the collections of the object model have in common.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "database/engine/automation/object.h"
#include "database/engine/engine_error.h"

namespace engine::automation {

/// The object of this engine behind an object of the model; 3219 where another engine has made it.
template <typename Ours, typename Interface>
Ours& ours(const std::shared_ptr<Interface>& object) {
  auto* found = dynamic_cast<Ours*>(object.get());
  if (found == nullptr) raise(error_number::invalid_operation);
  return *found;
}

/// A collection of an object, which must outlive it. The engine keeps lists that do not follow what statements and
/// other handles change: that of a stored object is read anew when it is first used, and first used after forget().
class Collection {
 public:
  Collection(const Object& owner, Kind kind, std::wstring_view member, bool stored)
      : owner_(owner), kind_(kind), member_(member), stored_(stored) {}

  std::int32_t count() const { return get().number(L"Count"); }
  Object item(Kind kind, std::int32_t position) const {
    return get().object(kind, L"Item", support::Variant::of_long(position));
  }
  Object item(Kind kind, std::string_view name) const {
    return get().object(kind, L"Item", support::Variant::of_text(name));
  }
  void append(const Object& object) const { get().call(L"Append", object.argument()); }
  void remove(std::string_view name) const { get().call(L"Delete", support::Variant::of_text(name)); }
  void forget() noexcept { collection_.reset(); }

 private:
  const Object& get() const;
  void refresh() const;

  const Object& owner_;
  Kind kind_;
  std::wstring_view member_;
  bool stored_;
  mutable Object collection_;
};

}  // namespace engine::automation
