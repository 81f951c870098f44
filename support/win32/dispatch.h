// Automation objects, called late bound: by the names of their members. The number of a name is looked up once for each
// kind of object.
#pragma once

#include <windows.h>
// Automation needs windows.h before it.
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "support/win32/variant.h"

namespace support {

/// True if the registry has the class's name. This takes a fraction of the time of an attempt to create an object.
bool is_registered(std::string_view class_name);

/// Raises 429, for a class that is not registered or cannot be created.
[[noreturn]] void raise_not_installed(std::string_view class_name);

/// Automation on this thread, for as long as this object lives. It must outlive every automation object.
class Apartment {
 public:
  Apartment() noexcept : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() {
    if (entered_) CoUninitialize();
  }

 private:
  bool entered_;
};

/// Member numbers by name, for objects of one kind.
using MemberNumbers = std::map<std::wstring, DISPID, std::less<>>;

/// A reference to an object; its destructor releases the object. A failing call raises RuntimeError with the number and
/// description that the object gave. Otherwise it raises 438 for a member that the object does not have, 13 or 6 for
/// arguments that it does not take, 450 for a wrong number of arguments, and 440 if the object gives no number.
class DispatchObject {
 public:
  DispatchObject() noexcept = default;
  /// Shares the object. `numbers` is shared by all objects of its kind.
  DispatchObject(std::shared_ptr<MemberNumbers> numbers, IDispatch* object) noexcept;
  DispatchObject(const DispatchObject& other) noexcept : DispatchObject(other.numbers_, other.get()) {}
  DispatchObject(DispatchObject&& other) noexcept = default;
  DispatchObject& operator=(DispatchObject other) noexcept {
    numbers_.swap(other.numbers_);
    object_.swap(other.object_);
    return *this;
  }
  ~DispatchObject() = default;

  /// Makes a new object of a class by name. Raises 429 if the class is not registered or cannot be created.
  static DispatchObject create(std::string_view class_name, std::shared_ptr<MemberNumbers> numbers);

  IDispatch* get() const noexcept { return object_.get(); }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  void reset() noexcept { object_.reset(); }
  /// Raises 438 where the object has no such member.
  void require(std::wstring_view member) const { number_of(member); }

  /// Reads a property or calls a method; late-bound callers cannot know which of both it is.
  template <typename... Arguments>
  Variant call(std::wstring_view member, const Arguments&... arguments) const {
    // The calling convention wants the arguments in reverse order.
    constexpr std::size_t count = sizeof...(arguments);
    std::array<VARIANTARG, count + 1> values{arguments.get()...};
    std::reverse(values.begin(), values.begin() + count);
    return invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, values.data(), count);
  }
  void put(std::wstring_view member, const Variant& value) const;

 private:
  struct Release {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
  };

  DISPID number_of(std::wstring_view member) const;
  Variant invoke(std::wstring_view member, int how, VARIANTARG* arguments, std::size_t count) const;

  // Released after the object, because the owner of the numbers may also keep the apartment alive.
  std::shared_ptr<MemberNumbers> numbers_;
  std::unique_ptr<IDispatch, Release> object_;
};

}  // namespace support
