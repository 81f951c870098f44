#include "database/engine/automation/object.h"

#include "support/error.h"

namespace engine::automation {

Object::Object(std::shared_ptr<Server> server, Kind kind, const support::Variant& result) : server_(std::move(server)) {
  if (result.type() != VT_DISPATCH || V_DISPATCH(&result.get()) == nullptr) {
    throw support::RuntimeError(91, "Object variable not set");
  }
  dispatch_ = support::DispatchObject(numbers(kind), V_DISPATCH(&result.get()));
}

}  // namespace engine::automation
