// The language component as a COM class: created by its class name, called late bound, released with the object.
#include "support/language.h"

#include <memory>

#include "support/error.h"
#include "support/win32/dispatch.h"

namespace support {

namespace {

class ComLanguage final : public LanguageComponent {
 public:
  /// Raises if the class is not registered, cannot be created or has no "loadres".
  explicit ComLanguage(std::string_view class_name)
      : object_(DispatchObject::create(class_name, std::make_shared<MemberNumbers>())) {
    object_.require(loadres_name);
  }

  std::string loadres(long number) const override {
    try {
      return object_.call(loadres_name, Variant::of_long(static_cast<std::int32_t>(number))).to_text();
    } catch (const RuntimeError&) {
      return {};  // as for an unknown number: the caller keeps the text it has
    }
  }

 private:
  static constexpr std::wstring_view loadres_name = L"loadres";

  Apartment apartment_;  // left only after the object is released
  DispatchObject object_;
};

}  // namespace

std::unique_ptr<LanguageComponent> create_installed_language(std::string_view class_name) {
  if (!is_registered(class_name)) return nullptr;
  try {
    return std::make_unique<ComLanguage>(class_name);
  } catch (const RuntimeError&) {
    return nullptr;
  }
}

}  // namespace support
