// The language component as a COM class: created by its class name, called late bound, released with the object.
#include <windows.h>
// Automation needs windows.h before it.
#include <oleauto.h>

#include <memory>
#include <utility>

#include "support/language.h"
#include "support/win32/wide.h"

namespace support {

namespace {

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

struct Release {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};
using DispatchPointer = std::unique_ptr<IDispatch, Release>;

class Variant {
 public:
  Variant() noexcept { VariantInit(&value_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&value_); }
  VARIANT* get() noexcept { return &value_; }

  std::string text() {
    if (FAILED(VariantChangeType(&value_, &value_, 0, VT_BSTR)) || value_.bstrVal == nullptr) return {};
    return narrow(std::wstring_view(value_.bstrVal, SysStringLen(value_.bstrVal)));
  }

 private:
  VARIANT value_{};
};

class ComLanguage final : public LanguageComponent {
 public:
  /// Null where the class is not registered, cannot be created or has no "loadres".
  static std::unique_ptr<LanguageComponent> create(std::string_view class_name) {
    auto language = std::make_unique<ComLanguage>();
    CLSID class_id{};
    void* object = nullptr;
    if (FAILED(CLSIDFromProgID(wide(class_name).c_str(), &class_id)) ||
        FAILED(CoCreateInstance(class_id, nullptr, CLSCTX_SERVER, IID_IDispatch, &object))) {
      return nullptr;
    }
    language->object_.reset(static_cast<IDispatch*>(object));
    std::wstring member = L"loadres";
    LPOLESTR name = member.data();
    if (FAILED(language->object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &language->loadres_))) {
      return nullptr;
    }
    return language;
  }

  std::string loadres(long number) const override {
    VARIANT argument{};
    argument.vt = VT_I4;
    argument.lVal = number;
    DISPPARAMS arguments{&argument, nullptr, 1, 0};
    Variant result;
    const HRESULT called = object_->Invoke(loadres_, IID_NULL, LOCALE_USER_DEFAULT,
                                           static_cast<WORD>(DISPATCH_METHOD | DISPATCH_PROPERTYGET), &arguments,
                                           result.get(), nullptr, nullptr);
    return SUCCEEDED(called) ? result.text() : std::string();
  }

 private:
  Apartment apartment_;  // left only after the object is released
  DispatchPointer object_;
  DISPID loadres_ = DISPID_UNKNOWN;
};

}  // namespace

std::unique_ptr<LanguageComponent> create_installed_language(std::string_view class_name) {
  return ComLanguage::create(class_name);
}

}  // namespace support
