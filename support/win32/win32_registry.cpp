#include "support/win32/win32_registry.h"

#include <fmt/core.h>
#include <windows.h>

#include "support/encoding.h"
#include "support/error.h"
#include "support/win32/wide.h"

namespace support {

namespace {

constexpr REGSAM reading_rights = KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY;
// All access rights that are specific to keys.
constexpr REGSAM writing_rights = 0x3F;

[[noreturn]] void fail(std::string_view key, LSTATUS status) {
  throw RuntimeError(error_number::path_file_access,
                     fmt::format("Cannot write the registry key {}: error {}", key, status));
}

HKEY root_handle(RootKey root) { return root == RootKey::CurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }

class OpenKey {
 public:
  OpenKey() = default;
  OpenKey(RootKey root, std::string_view key, REGSAM rights) {
    if (RegOpenKeyExW(root_handle(root), wide(key).c_str(), 0, rights, &key_) != ERROR_SUCCESS) {
      key_ = nullptr;
    }
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  ~OpenKey() {
    if (key_ != nullptr) RegCloseKey(key_);
  }

  explicit operator bool() const noexcept { return key_ != nullptr; }
  HKEY get() const noexcept { return key_; }
  HKEY* put() noexcept { return &key_; }

 private:
  HKEY key_ = nullptr;
};

/// True if the diary reads the text without loss: its calls use code page 1252 and stop at a NUL.
bool fits_registry(std::string_view text) { return fits_cp1252(text) && text.find('\0') == std::string_view::npos; }

std::optional<std::string> text_data(HKEY key, const std::wstring& name, DWORD size) {
  std::wstring buffer(size / sizeof(wchar_t) + 1, L' ');
  auto filled = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
  auto* const bytes = reinterpret_cast<BYTE*>(buffer.data());
  if (RegQueryValueExW(key, name.c_str(), nullptr, nullptr, bytes, &filled) != ERROR_SUCCESS) return std::nullopt;
  return narrow(std::wstring_view(buffer).substr(0, filled / sizeof(wchar_t)));
}

std::optional<std::uint32_t> number_data(HKEY key, const std::wstring& name) {
  DWORD number = 0;
  DWORD size = sizeof number;
  auto* const bytes = reinterpret_cast<BYTE*>(&number);
  if (RegQueryValueExW(key, name.c_str(), nullptr, nullptr, bytes, &size) != ERROR_SUCCESS) return std::nullopt;
  return number;
}

}  // namespace

bool Win32Registry::key_exists(RootKey root, std::string_view key) const {
  return static_cast<bool>(OpenKey(root, key, reading_rights));
}

std::optional<RegistryValue> Win32Registry::read(RootKey root, std::string_view key, std::string_view name) const {
  const OpenKey open(root, key, reading_rights);
  const std::wstring value_name = wide(name);
  DWORD type = 0;
  DWORD size = 0;
  if (!open || RegQueryValueExW(open.get(), value_name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  RegistryValue value{type, {}, 0};
  if (type == REG_SZ || type == REG_EXPAND_SZ) {
    auto text = text_data(open.get(), value_name, size);
    if (!text) return std::nullopt;
    value.text = std::move(*text);
  } else if (type == REG_DWORD) {
    const auto number = number_data(open.get(), value_name);
    if (!number) return std::nullopt;
    value.number = *number;
  }
  return value;
}

bool Win32Registry::can_write(RootKey root, std::string_view key) const {
  if (OpenKey(root, key, writing_rights)) return true;
  // Otherwise the key above must allow a new key.
  const auto above = key.rfind('\\');
  return !key_exists(root, key) && !key.empty() &&
         can_write(root, above == std::string_view::npos ? std::string_view() : key.substr(0, above));
}

Registry::CreateResult Win32Registry::create_key(RootKey root, std::string_view key, std::string_view class_name) {
  if (!fits_registry(key)) return CreateResult::Failed;
  OpenKey created;
  DWORD disposition = 0;
  std::wstring class_text = wide(class_name);
  const LSTATUS status = RegCreateKeyExW(root_handle(root), wide(key).c_str(), 0, class_text.data(),
                                         REG_OPTION_NON_VOLATILE, writing_rights, nullptr, created.put(), &disposition);
  if (status != ERROR_SUCCESS) fail(key, status);
  RegFlushKey(created.get());
  return disposition == REG_CREATED_NEW_KEY ? CreateResult::Created : CreateResult::Existed;
}

bool Win32Registry::write_text(RootKey root, std::string_view key, std::string_view name, std::string_view value) {
  if (!fits_registry(key) || !fits_registry(name) || !fits_registry(value)) return false;
  const OpenKey open(root, key, writing_rights);
  if (!open) return false;
  const std::wstring text = wide(value);
  const auto* const bytes = reinterpret_cast<const BYTE*>(text.c_str());
  const LSTATUS status = RegSetValueExW(open.get(), wide(name).c_str(), 0, REG_SZ, bytes,
                                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  if (status != ERROR_SUCCESS) fail(key, status);
  return true;
}

}  // namespace support
