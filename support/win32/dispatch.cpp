#include "support/win32/dispatch.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "support/error.h"
#include "support/win32/wide.h"

namespace support {

namespace {

struct CallError {
  HRESULT outcome;
  int number;
  const char* text;
};

constexpr CallError call_errors[] = {
    {DISP_E_UNKNOWNNAME, 438, "Object doesn't support this property or method"},
    {DISP_E_MEMBERNOTFOUND, 438, "Object doesn't support this property or method"},
    {DISP_E_TYPEMISMATCH, error_number::type_mismatch, "Type mismatch"},
    {DISP_E_OVERFLOW, error_number::overflow, "Overflow"},
    {DISP_E_BADPARAMCOUNT, 450, "Wrong number of arguments or invalid property assignment"},
    {DISP_E_PARAMNOTOPTIONAL, 450, "Wrong number of arguments or invalid property assignment"},
    {DISP_E_PARAMNOTFOUND, 450, "Wrong number of arguments or invalid property assignment"},
    {E_OUTOFMEMORY, error_number::out_of_memory, "Out of memory"},
};

constexpr int automation_error = 440;

/// What a failing object says about its failure; frees the texts.
class ExceptionInfo {
 public:
  ExceptionInfo() = default;
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;
  ~ExceptionInfo() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }
  EXCEPINFO* receive() noexcept { return &info_; }

  RuntimeError error() {
    if (info_.pfnDeferredFillIn != nullptr) info_.pfnDeferredFillIn(&info_);
    std::string text = info_.bstrDescription == nullptr
                           ? std::string()
                           : narrow({info_.bstrDescription, SysStringLen(info_.bstrDescription)});
    if (text.empty()) text = "Automation error";
    return {number(), text};
  }

 private:
  int number() const noexcept {
    if (info_.wCode != 0) return info_.wCode;
    // A component's own number is the code of a result in the facility "control".
    return HRESULT_FACILITY(info_.scode) == FACILITY_CONTROL ? HRESULT_CODE(info_.scode) : automation_error;
  }

  EXCEPINFO info_{};
};

[[noreturn]] void raise_call_error(HRESULT outcome) {
  const auto* found = std::ranges::find(call_errors, outcome, &CallError::outcome);
  if (found != std::end(call_errors)) throw RuntimeError(found->number, found->text);
  // A component may return its number as the result instead of filling in the exception.
  if (HRESULT_FACILITY(outcome) == FACILITY_CONTROL) throw RuntimeError(HRESULT_CODE(outcome), "Automation error");
  throw RuntimeError(automation_error, "Automation error");
}

}  // namespace

bool is_registered(std::string_view class_name) {
  return RegGetValueW(HKEY_CLASSES_ROOT, (wide(class_name) + L"\\CLSID").c_str(), nullptr, RRF_RT_ANY, nullptr, nullptr,
                      nullptr) == ERROR_SUCCESS;
}

void raise_not_installed(std::string_view class_name) {
  throw RuntimeError(error_number::no_such_engine, std::string(class_name) + " is not installed on this machine");
}

DispatchObject::DispatchObject(std::shared_ptr<MemberNumbers> numbers, IDispatch* object) noexcept
    : numbers_(std::move(numbers)), object_(object) {
  if (object != nullptr) object->AddRef();
}

DispatchObject DispatchObject::create(std::string_view class_name, std::shared_ptr<MemberNumbers> numbers) {
  CLSID class_id{};
  void* object = nullptr;
  if (FAILED(CLSIDFromProgID(wide(class_name).c_str(), &class_id)) ||
      FAILED(CoCreateInstance(class_id, nullptr, CLSCTX_SERVER, IID_IDispatch, &object))) {
    raise_not_installed(class_name);
  }
  DispatchObject created;
  created.numbers_ = std::move(numbers);
  created.object_.reset(static_cast<IDispatch*>(object));
  return created;
}

void DispatchObject::put(std::wstring_view member, const Variant& value) const {
  VARIANTARG argument = value.get();
  invoke(member, DISPATCH_PROPERTYPUT, &argument, 1);
}

DISPID DispatchObject::number_of(std::wstring_view member) const {
  if (const auto known = numbers_->find(member); known != numbers_->end()) return known->second;
  std::wstring text(member);
  LPOLESTR name = text.data();
  DISPID number = DISPID_UNKNOWN;
  const HRESULT outcome = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &number);
  if (FAILED(outcome)) raise_call_error(outcome);
  numbers_->emplace(std::move(text), number);
  return number;
}

Variant DispatchObject::invoke(std::wstring_view member, int how, VARIANTARG* arguments, std::size_t count) const {
  if (!object_) throw RuntimeError(error_number::no_object, "Object variable not set");
  DISPPARAMS parameters{arguments, nullptr, static_cast<UINT>(count), 0};
  DISPID put_argument = DISPID_PROPERTYPUT;
  if (how == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &put_argument;
    parameters.cNamedArgs = 1;
  }
  Variant result;
  ExceptionInfo exception;
  const HRESULT outcome =
      object_->Invoke(number_of(member), IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(how), &parameters,
                      how == DISPATCH_PROPERTYPUT ? nullptr : result.receive(), exception.receive(), nullptr);
  if (outcome == DISP_E_EXCEPTION) throw exception.error();
  if (FAILED(outcome)) raise_call_error(outcome);
  return result;
}

}  // namespace support
