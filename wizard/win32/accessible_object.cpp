#include "wizard/win32/accessible_object.h"

#include <utility>

#include "support/win32/system_function.h"
#include "support/win32/wide.h"

namespace wizard::win32 {
namespace {

BSTR system_text(const std::string& text) { return SysAllocString(support::wide(text).c_str()); }

bool is_self(const VARIANT& child) { return child.vt == VT_I4 && child.lVal == CHILDID_SELF; }

/// Every question that is not about the window itself, or not about what is ours to say, goes to the system's object.
class AccessibleObject final : public IAccessible {
 public:
  AccessibleObject(HWND window, Com<IAccessible> native, SpokenOf what, std::optional<long> role)
      : window_(window), native_(std::move(native)), what_(std::move(what)), role_(role) {}

  HRESULT WINAPI QueryInterface(REFIID wanted, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = wanted == IID_IUnknown || wanted == IID_IDispatch || wanted == IID_IAccessible;
    // Walking the children is asked of another interface, which the system's object answers for itself.
    if (!known)
      return wanted == IID_IEnumVARIANT ? native_->QueryInterface(wanted, object) : (*object = nullptr, E_NOINTERFACE);
    *object = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
  }
  ULONG WINAPI AddRef() override { return ++references_; }
  ULONG WINAPI Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT WINAPI get_accName(VARIANT child, BSTR* name) override {
    if (const std::string ours = is_self(child) ? what_().name : std::string(); !ours.empty()) {
      *name = system_text(ours);
      return S_OK;
    }
    return native_->get_accName(child, name);
  }
  HRESULT WINAPI get_accDescription(VARIANT child, BSTR* description) override {
    if (const std::string ours = is_self(child) ? what_().description : std::string(); !ours.empty()) {
      *description = system_text(ours);
      return S_OK;
    }
    return native_->get_accDescription(child, description);
  }
  HRESULT WINAPI get_accRole(VARIANT child, VARIANT* role) override {
    if (!is_self(child) || !role_) return native_->get_accRole(child, role);
    role->vt = VT_I4;
    role->lVal = *role_;
    return S_OK;
  }
  HRESULT WINAPI get_accState(VARIANT child, VARIANT* state) override {
    const HRESULT result = native_->get_accState(child, state);
    if (!is_self(child) || FAILED(result) || state->vt != VT_I4) return result;
    if (what_().silent) state->lVal |= STATE_SYSTEM_INVISIBLE;
    const bool can_be_chosen = role_ == ROLE_SYSTEM_RADIOBUTTON || role_ == ROLE_SYSTEM_CHECKBUTTON;
    if (can_be_chosen && SendMessageW(window_, BM_GETCHECK, 0, 0) == BST_CHECKED) state->lVal |= STATE_SYSTEM_CHECKED;
    return result;
  }

  HRESULT WINAPI GetTypeInfoCount(UINT* count) override { return native_->GetTypeInfoCount(count); }
  HRESULT WINAPI GetTypeInfo(UINT number, LCID locale, ITypeInfo** info) override {
    return native_->GetTypeInfo(number, locale, info);
  }
  HRESULT WINAPI GetIDsOfNames(REFIID interface_id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    return native_->GetIDsOfNames(interface_id, names, count, locale, ids);
  }
  HRESULT WINAPI Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    // Late bound it would be the system's object that answers, without what is ours.
    return E_NOTIMPL;
  }
  HRESULT WINAPI get_accParent(IDispatch** parent) override { return native_->get_accParent(parent); }
  HRESULT WINAPI get_accChildCount(LONG* count) override { return native_->get_accChildCount(count); }
  HRESULT WINAPI get_accChild(VARIANT child, IDispatch** object) override {
    return native_->get_accChild(child, object);
  }
  HRESULT WINAPI get_accValue(VARIANT child, BSTR* value) override { return native_->get_accValue(child, value); }
  HRESULT WINAPI get_accHelp(VARIANT child, BSTR* help) override { return native_->get_accHelp(child, help); }
  HRESULT WINAPI get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override {
    return native_->get_accHelpTopic(file, child, topic);
  }
  HRESULT WINAPI get_accKeyboardShortcut(VARIANT child, BSTR* key) override {
    return native_->get_accKeyboardShortcut(child, key);
  }
  HRESULT WINAPI get_accFocus(VARIANT* focus) override { return native_->get_accFocus(focus); }
  HRESULT WINAPI get_accSelection(VARIANT* selection) override { return native_->get_accSelection(selection); }
  HRESULT WINAPI get_accDefaultAction(VARIANT child, BSTR* action) override {
    return native_->get_accDefaultAction(child, action);
  }
  HRESULT WINAPI accSelect(LONG flags, VARIANT child) override { return native_->accSelect(flags, child); }
  HRESULT WINAPI accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override {
    return native_->accLocation(left, top, width, height, child);
  }
  HRESULT WINAPI accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
    return native_->accNavigate(direction, start, end);
  }
  HRESULT WINAPI accHitTest(LONG left, LONG top, VARIANT* child) override {
    return native_->accHitTest(left, top, child);
  }
  HRESULT WINAPI accDoDefaultAction(VARIANT child) override { return native_->accDoDefaultAction(child); }
  HRESULT WINAPI put_accName(VARIANT child, BSTR name) override { return native_->put_accName(child, name); }
  HRESULT WINAPI put_accValue(VARIANT child, BSTR value) override { return native_->put_accValue(child, value); }

 private:
  ~AccessibleObject() = default;

  const HWND window_;
  const Com<IAccessible> native_;
  const SpokenOf what_;
  const std::optional<long> role_;
  ULONG references_ = 1;  ///< its apartment's thread alone counts
};

}  // namespace

Com<IAccessible> accessible_object(HWND window, SpokenOf what, std::optional<long> role) {
  static auto* const create =
      support::system_function<decltype(CreateStdAccessibleObject)>(L"oleacc.dll", "CreateStdAccessibleObject");
  void* native = nullptr;
  if (create == nullptr || FAILED(create(window, OBJID_CLIENT, IID_IAccessible, &native)) || native == nullptr)
    return {};
  return Com<IAccessible>(
      new AccessibleObject(window, Com<IAccessible>(static_cast<IAccessible*>(native)), std::move(what), role));
}

}  // namespace wizard::win32
