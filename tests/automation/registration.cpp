#include "tests/automation/registration.h"

#include <windows.h>
// Automation needs windows.h before it.
#include <oleauto.h>

#include <stdexcept>

#include "support/win32/wide.h"
#include "tests/automation/server/class_ids.h"
#include "tests/automation/server_library.h"

namespace automation_test {
namespace {

const std::wstring classes = L"Software\\Classes\\";

const CLSID& id_of(const std::string& class_name) {
  if (class_name == newer_engine) return test_server::engine_classes[0];
  if (class_name == older_engine) return test_server::engine_classes[1];
  return test_server::language_class;
}

std::wstring id_text(const std::string& class_name) {
  wchar_t text[64];
  StringFromGUID2(id_of(class_name), text, 64);
  return text;
}

std::wstring value_of(const std::wstring& key) {
  wchar_t text[64] = {};
  DWORD size = sizeof text;
  RegGetValueW(HKEY_LOCAL_MACHINE, (classes + key).c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
  return text;
}

void set_value(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  const LSTATUS outcome = RegSetKeyValueW(HKEY_LOCAL_MACHINE, (classes + key).c_str(), name, REG_SZ, text.c_str(),
                                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  if (outcome != ERROR_SUCCESS) throw std::runtime_error("the test server cannot be registered");
}

void remove_key(const std::wstring& key) { RegDeleteTreeW(HKEY_LOCAL_MACHINE, (classes + key).c_str()); }

}  // namespace

Registration::Registration(std::vector<std::string> class_names, const std::wstring& library)
    : class_names_(std::move(class_names)) {
  repeat_server_salts();
  for (const std::string& name : class_names_) {
    const std::wstring id = id_text(name), wide_name = support::wide(name);
    const std::wstring known = value_of(wide_name + L"\\CLSID");
    if (!known.empty() && known != id) throw std::runtime_error(name + " is installed on this machine");
    set_value(wide_name + L"\\CLSID", nullptr, id);
    set_value(L"CLSID\\" + id + L"\\InprocServer32", nullptr, library);
    set_value(L"CLSID\\" + id + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  }
}

Registration::~Registration() {
  for (const std::string& name : class_names_) {
    remove_key(support::wide(name));
    remove_key(L"CLSID\\" + id_text(name));
  }
}

}  // namespace automation_test
