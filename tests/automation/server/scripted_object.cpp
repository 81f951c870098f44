#include "tests/automation/server/scripted_object.h"

namespace test_server {

std::atomic<long> Counted::living = 0;
std::wstring Counted::released;

std::atomic<bool> strict = false;

Counted::~Counted() {
  --living;
  released.append(kind_).append(L" ");
}

std::string text_of(const VARIANT& value) {
  if (V_VT(&value) != VT_BSTR) throw CallFailure{DISP_E_TYPEMISMATCH};
  return support::narrow({V_BSTR(&value), SysStringLen(V_BSTR(&value))});
}

std::int32_t number_of(const VARIANT& value) {
  if (V_VT(&value) == VT_I2) return V_I2(&value);
  if (V_VT(&value) != VT_I4) throw CallFailure{DISP_E_TYPEMISMATCH};
  return V_I4(&value);
}

std::int16_t short_of(const VARIANT& value) {
  if (V_VT(&value) != VT_I2) throw CallFailure{DISP_E_TYPEMISMATCH};
  return V_I2(&value);
}

bool flag_of(const VARIANT& value) {
  if (V_VT(&value) != VT_BOOL) throw CallFailure{DISP_E_TYPEMISMATCH};
  return V_BOOL(&value) != VARIANT_FALSE;
}

HRESULT report(const support::RuntimeError& error, EXCEPINFO* exception) {
  const HRESULT own_number = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, error.number());
  if (strict) return own_number;
  if (exception == nullptr) return E_FAIL;
  const std::wstring text = support::wide(error.what());
  *exception = {};
  exception->bstrSource = SysAllocString(L"test server");
  exception->bstrDescription = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  exception->scode = own_number;
  return DISP_E_EXCEPTION;
}

}  // namespace test_server
