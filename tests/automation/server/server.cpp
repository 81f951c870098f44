// The entry points of the library: its classes by their identifiers, and what tests ask it.
#include <windows.h>
// Automation needs windows.h before it.
#include <oleauto.h>

#include "tests/automation/server/class_ids.h"
#include "tests/automation/server/engine_objects.h"
#include "tests/automation/server/scripted_object.h"
#include "tests/engine/quick_keys.h"

namespace test_server {
namespace {

/// The language component: texts by number.
class LanguageObject final : public ScriptedObject<LanguageObject> {
 public:
  static constexpr const wchar_t* kind = L"Language";
  static std::span<const Member<LanguageObject>> members() {
    static constexpr Member<LanguageObject> table[] = {
        {L"loadres",
         [](LanguageObject&, const Arguments& call) {
           const std::int32_t number = number_of(call[0]);
           if (number < 0) throw support::RuntimeError(1000, "no such text");
           return number == 0 ? Variant() : Variant::of_text("Größe " + std::to_string(number) + "|Ein Tipp €");
         }},
    };
    return table;
  }
};

/// Makes objects of one class. Each class has one, which lives as long as the library.
template <typename Object>
class Factory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    *object = nullptr;
    if (!IsEqualIID(wanted, IID_IUnknown) && !IsEqualIID(wanted, IID_IClassFactory)) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** object) override {
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    auto* made = new Object();
    const HRESULT outcome = made->QueryInterface(wanted, object);
    made->Release();
    return outcome;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace
}  // namespace test_server

extern "C" {

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID class_id, REFIID wanted, void** object) {
  static test_server::Factory<test_server::EngineObject> engines;
  static test_server::Factory<test_server::LanguageObject> languages;
  if (IsEqualCLSID(class_id, test_server::language_class)) return languages.QueryInterface(wanted, object);
  for (const CLSID& known : test_server::engine_classes) {
    if (IsEqualCLSID(class_id, known)) return engines.QueryInterface(wanted, object);
  }
  *object = nullptr;
  return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() { return test_server::Counted::living == 0 ? S_OK : S_FALSE; }

long LivingObjects() { return test_server::Counted::living; }

void RepeatSalts() { engine::test::repeat_salts(); }

void SetStrict(long strict) { test_server::strict = strict != 0; }

const wchar_t* ReleasedObjects() { return test_server::Counted::released.c_str(); }
}
