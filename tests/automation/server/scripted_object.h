// An automation object of the test server: a table of its members' names with what they do. It is strict with callers:
// arguments must have the exact type, names of members must be known, properties must be set as properties.
#pragma once

#include <windows.h>
// Automation needs windows.h before it.
#include <oleauto.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cwchar>
#include <span>
#include <string>
#include <string_view>

#include "support/error.h"
#include "support/win32/variant.h"
#include "support/win32/wide.h"

namespace test_server {

using support::Variant;

/// A call that fails without an exception of the object's own.
struct CallFailure {
  HRESULT outcome;
};

std::string text_of(const VARIANT& value);
/// 16 or 32 bits.
std::int32_t number_of(const VARIANT& value);
std::int16_t short_of(const VARIANT& value);
bool flag_of(const VARIANT& value);
/// The object behind a reference, if it is one of ours of this kind; raises 3219 otherwise.
template <typename Object>
Object& object_of(const VARIANT& value) {
  if (V_VT(&value) != VT_DISPATCH) throw CallFailure{DISP_E_TYPEMISMATCH};
  auto* object = dynamic_cast<Object*>(V_DISPATCH(&value));
  if (object == nullptr) throw support::RuntimeError(3219, "Invalid operation.");
  return *object;
}

/// A call's arguments, in the order of the caller's text.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& parameters) : parameters_(parameters) {}
  std::size_t count() const { return parameters_.cArgs; }
  const VARIANT& operator[](std::size_t position) const {
    if (position >= count()) throw CallFailure{DISP_E_PARAMNOTOPTIONAL};
    return parameters_.rgvarg[count() - 1 - position];
  }
  std::string text(std::size_t position) const { return text_of((*this)[position]); }

 private:
  const DISPPARAMS& parameters_;
};

/// Counts the living objects, and keeps a list of the kinds of the released ones.
class Counted {
 public:
  explicit Counted(const wchar_t* kind) : kind_(kind) { ++living; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  static std::atomic<long> living;
  /// The kinds of the released objects, each followed by a blank.
  static std::wstring released;

 protected:
  ~Counted();

 private:
  const wchar_t* kind_;
};

/// True if the objects shall do what real objects may do beyond their documentation: return an error's number as the
/// result of the call, fail when a list is read again, refuse an empty text only at Update, pad texts of a fixed size,
/// take `index` and `desc` for words of the language, have another number for an existing field, and not read a file
/// with a password by its name alone.
extern std::atomic<bool> strict;

/// The result of a failed member for its caller.
HRESULT report(const support::RuntimeError& error, EXCEPINFO* exception);

template <typename Self>
struct Member {
  const wchar_t* name;
  Variant (*get)(Self&, const Arguments&);  ///< reads the property or calls the method
  void (*put)(Self&, const VARIANT&) = nullptr;
};

/// `Self` has a static constexpr `kind` (its name) and a static `members()`: a span of Member<Self>.
template <typename Self>
class ScriptedObject : public IDispatch, private Counted {
 public:
  ScriptedObject() : Counted(Self::kind) {}
  virtual ~ScriptedObject() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    *object = nullptr;
    if (!IsEqualIID(wanted, IID_IUnknown) && !IsEqualIID(wanted, IID_IDispatch)) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* numbers) override {
    const auto members = Self::members();
    const auto found =
        std::ranges::find_if(members, [&](const Member<Self>& member) { return _wcsicmp(member.name, names[0]) == 0; });
    numbers[0] = found == members.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - members.begin() + 1);
    return found == members.end() ? DISP_E_UNKNOWNNAME : S_OK;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID number, REFIID, LCID, WORD how, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override {
    const auto members = Self::members();
    if (number < 1 || static_cast<std::size_t>(number) > members.size()) return DISP_E_MEMBERNOTFOUND;
    try {
      return perform(members[static_cast<std::size_t>(number) - 1], how, *parameters, result);
    } catch (const CallFailure& failure) {
      return failure.outcome;
    } catch (const support::RuntimeError& error) {
      return report(error, exception);
    }
  }

 private:
  HRESULT perform(const Member<Self>& member, WORD how, DISPPARAMS& parameters, VARIANT* result) {
    Self& self = static_cast<Self&>(*this);
    if (how == DISPATCH_PROPERTYPUT) {
      if (member.put == nullptr) return DISP_E_MEMBERNOTFOUND;
      if (parameters.cNamedArgs != 1 || *parameters.rgdispidNamedArgs != DISPID_PROPERTYPUT) {
        return DISP_E_PARAMNOTFOUND;
      }
      member.put(self, parameters.rgvarg[0]);
      return S_OK;
    }
    Variant value = member.get(self, Arguments(parameters));
    if (result != nullptr) *result = value.release();
    return S_OK;
  }

  std::atomic<ULONG> references_{1};
};

/// A new object, as the result of a call.
template <typename Object, typename... Parts>
Variant new_object(Parts&&... parts) {
  VARIANT value;
  VariantInit(&value);
  V_VT(&value) = VT_DISPATCH;
  V_DISPATCH(&value) = new Object(std::forward<Parts>(parts)...);
  return Variant(value);
}

}  // namespace test_server
