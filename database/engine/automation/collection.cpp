#include "database/engine/automation/collection.h"

#include "database/engine/engine_error.h"

namespace engine::automation {

const Object& Collection::get() const {
  if (collection_) return collection_;
  if (!owner_) raise(3420);
  collection_ = owner_.object(kind_, member_);
  if (stored_) collection_.call(L"Refresh");
  return collection_;
}

}  // namespace engine::automation
