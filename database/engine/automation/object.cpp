#include "database/engine/automation/object.h"

#include "database/engine/engine_error.h"

namespace engine::automation {

Object::Object(std::shared_ptr<Server> server, Kind kind, const support::Variant& result) : server_(std::move(server)) {
  if (result.type() != VT_DISPATCH || V_DISPATCH(&result.get()) == nullptr) {
    raise(error_number::no_object);
  }
  dispatch_ = support::DispatchObject(numbers(kind), V_DISPATCH(&result.get()));
}

}  // namespace engine::automation
