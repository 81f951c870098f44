// An object of the automation engine: its late-bound reference, and what all objects of one engine share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "database/engine/engine_error.h"
#include "support/win32/dispatch.h"

namespace engine::automation {

/// Kinds of objects. In all objects of one kind a member has the same number.
enum class Kind : std::uint8_t {
  Engine,
  Workspace,
  Database,
  TableDefs,
  TableDef,
  TableFields,
  Indexes,
  Index,
  IndexFields,
  Field,
  Recordset,
  RecordsetFields,
  RecordsetField,
};
inline constexpr std::size_t kinds = static_cast<std::size_t>(Kind::RecordsetField) + 1;

/// Lives as long as any object of the engine does.
struct Server {
  support::Apartment apartment;
  std::array<support::MemberNumbers, kinds> numbers;
};

class Object {
 public:
  /// Refers to no object: every call raises 91.
  Object() = default;
  /// Creates a new engine. Raises 429 where it is not registered.
  explicit Object(std::string_view identifier) : server_(std::make_shared<Server>()) {
    dispatch_ = support::DispatchObject::create(identifier, numbers(Kind::Engine));
  }

  template <typename... Arguments>
  support::Variant call(std::wstring_view member, const Arguments&... arguments) const {
    return dispatch_.call(member, arguments...);
  }
  /// Returns the object that a call returns. Raises 91 where it returns none.
  template <typename... Arguments>
  Object object(Kind kind, std::wstring_view member, const Arguments&... arguments) const {
    return Object(server_, kind, dispatch_.call(member, arguments...));
  }
  void put(std::wstring_view member, const support::Variant& value) const { dispatch_.put(member, value); }

  std::string text(std::wstring_view property) const { return call(property).to_text(); }
  std::int32_t number(std::wstring_view property) const { return call(property).to_long(); }
  bool flag(std::wstring_view property) const { return call(property).to_flag(); }

  /// The object as an argument of a call.
  support::Variant argument() const { return support::Variant::of_object(dispatch_.get()); }
  explicit operator bool() const noexcept { return static_cast<bool>(dispatch_); }
  void reset() noexcept { dispatch_.reset(); }

 private:
  Object(std::shared_ptr<Server> server, Kind kind, const support::Variant& result);

  std::shared_ptr<support::MemberNumbers> numbers(Kind kind) const {
    return {server_, &server_->numbers[static_cast<std::size_t>(kind)]};
  }

  std::shared_ptr<Server> server_;
  support::DispatchObject dispatch_;
};

/// Returns the object of this engine that stands behind an object of the model. Raises 3219 where another engine made
/// that object.
template <typename Ours, typename Interface>
Ours& ours(const std::shared_ptr<Interface>& object) {
  auto* found = dynamic_cast<Ours*>(object.get());
  if (found == nullptr) raise(error_number::invalid_operation);
  return *found;
}

/// A collection of an object, which must outlive it. The engine's own lists do not follow the changes that statements
/// and other handles make. Therefore the list of a stored object is read anew at its first use, and at the first use
/// after forget().
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
