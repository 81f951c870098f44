#include "database/engine/automation/object.h"

#include "database/engine/engine_error.h"

namespace engine::automation {

Object::Object(std::shared_ptr<Server> server, Kind kind, const support::Variant& result) : server_(std::move(server)) {
  if (result.type() != VT_DISPATCH || V_DISPATCH(&result.get()) == nullptr) {
    raise(error_number::no_object);
  }
  dispatch_ = support::DispatchObject(numbers(kind), V_DISPATCH(&result.get()));
}

void Collection::refresh() const {
  try {
    collection_.call(L"Refresh");
  } catch (const support::RuntimeError&) {
    // If the list cannot be read anew, the engine's present list counts. Asking for an item that it lacks is an error.
  }
}

const Object& Collection::get() const {
  if (collection_) return collection_;
  if (!owner_) raise(error_number::object_invalid);
  collection_ = owner_.object(kind_, member_);
  if (stored_) refresh();
  return collection_;
}

}  // namespace engine::automation
