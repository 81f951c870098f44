// Owners of COM objects and of a thread's use of COM.
#pragma once

#include <windows.h>
// The COM headers need windows.h before them.
#include <objbase.h>

#include <memory>

namespace wizard::win32 {

struct ReleaseObject {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <typename Interface>
using Com = std::unique_ptr<Interface, ReleaseObject>;

/// COM on this thread, in an apartment as the shell's dialogs want it. Outlives every COM object.
class ComSession {
 public:
  ComSession() noexcept
      : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
  ~ComSession() {
    if (entered_) CoUninitialize();
  }
  ComSession(const ComSession&) = delete;
  ComSession& operator=(const ComSession&) = delete;

 private:
  bool entered_;
};

}  // namespace wizard::win32
