#include "database/engine/automation/collection.h"

#include "support/error.h"

namespace engine::automation {

void raise_object_closed() { throw support::RuntimeError(3420, "Object invalid or no longer set."); }

void raise_other_engine() { throw support::RuntimeError(3219, "Invalid operation."); }

const Object& Collection::get() const {
  if (collection_) return collection_;
  if (!owner_) raise_object_closed();
  collection_ = owner_.object(kind_, member_);
  if (stored_) collection_.call(L"Refresh");
  return collection_;
}

}  // namespace engine::automation
