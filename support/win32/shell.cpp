#include "support/shell.h"

#include <windows.h>
// The shell's headers need windows.h before them.
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <array>
#include <memory>

#include "support/file_system.h"
#include "support/win32/system_function.h"
#include "support/win32/wide.h"

namespace support {

namespace {

/// A function of the shell, by its declaration; null if it cannot be loaded.
template <typename Function>
Function* shell_function(const char* name) {
  return system_function<Function>(L"shell32.dll", name);
}

struct FreeTaskMemory {
  void operator()(void* memory) const noexcept { CoTaskMemFree(memory); }
};

struct ReleaseObject {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};

class OleSession {
 public:
  OleSession() noexcept : entered_(SUCCEEDED(OleInitialize(nullptr))) {}
  OleSession(const OleSession&) = delete;
  OleSession& operator=(const OleSession&) = delete;
  ~OleSession() {
    if (entered_) OleUninitialize();
  }

 private:
  bool entered_;
};

std::string path_in(std::string_view folder, const std::string& name) {
  std::string path(folder);
  if (!path.ends_with('\\')) path += '\\';
  return path + name;
}

/// The older dialog, for systems without the newer one.
std::optional<std::string> choose_in_tree(std::string_view title, HWND owner) {
  auto* const browse_tree = shell_function<decltype(SHBrowseForFolderW)>("SHBrowseForFolderW");
  auto* const path_of = shell_function<decltype(SHGetPathFromIDListW)>("SHGetPathFromIDListW");
  if (browse_tree == nullptr || path_of == nullptr) return std::nullopt;
  const std::wstring title_text = wide(title);
  BROWSEINFOW browse{};
  browse.hwndOwner = owner;
  browse.lpszTitle = title_text.c_str();
  browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  const std::unique_ptr<ITEMIDLIST, FreeTaskMemory> chosen(browse_tree(&browse));
  std::array<wchar_t, MAX_PATH> path{};
  if (!chosen || path_of(chosen.get(), path.data()) == 0) return std::nullopt;
  return narrow(path.data());
}

FILEOP_FLAGS recycle_flags(const RecycleDisplay& display) {
  // If a file cannot be restored later, the shell must say so before it deletes the file.
  unsigned flags = FOF_ALLOWUNDO | FOF_FILESONLY;
  flags |= display.confirmation ? FOF_WANTNUKEWARNING : FOF_NOCONFIRMATION;
  if (!display.progress) flags |= FOF_SILENT;
  if (!display.confirmation && !display.progress) flags |= FOF_NOERRORUI;
  return static_cast<FILEOP_FLAGS>(flags);
}

}  // namespace

std::vector<std::string> recycle(std::string_view folder, std::string_view pattern, const RecycleDisplay& display) {
  const FileSystem& files = host_file_system();
  std::vector<std::string> names = files.files(folder, pattern);
  if (names.empty()) return names;
  std::wstring list;
  for (const std::string& name : names) list.append(wide_path(path_in(folder, name))).push_back(L'\0');
  SHFILEOPSTRUCTW operation{};
  operation.hwnd = static_cast<HWND>(display.owner);
  operation.wFunc = FO_DELETE;
  operation.pFrom = list.c_str();
  operation.fFlags = recycle_flags(display);
  // Neither the result nor fAnyOperationsAborted tells which files are gone; a look into the folder does.
  if (auto* const run = shell_function<decltype(SHFileOperationW)>("SHFileOperationW")) run(&operation);
  std::erase_if(names, [&](const std::string& name) { return files.file_size(path_in(folder, name)).has_value(); });
  return names;
}

bool has_recycle_bin(std::string_view folder) {
  std::array<wchar_t, MAX_PATH> volume{};
  if (is_network_path(folder) ||
      GetVolumePathNameW(wide_path(folder).c_str(), volume.data(), static_cast<DWORD>(volume.size())) == 0 ||
      GetDriveTypeW(volume.data()) != DRIVE_FIXED)
    return false;
  SHQUERYRBINFO bin{};
  bin.cbSize = sizeof bin;
  auto* const query = shell_function<decltype(SHQueryRecycleBinW)>("SHQueryRecycleBinW");
  return query != nullptr && SUCCEEDED(query(volume.data(), &bin));
}

bool open_file(std::string_view path) {
  constexpr INT_PTR last_shell_error = 32;
  if (!host_file_system().file_size(path)) return false;
  const OleSession session;
  auto* const execute = shell_function<decltype(ShellExecuteW)>("ShellExecuteW");
  if (execute == nullptr) return false;
  const HINSTANCE result = execute(nullptr, L"open", wide_path(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(result) > last_shell_error;
}

std::optional<std::string> choose_folder(std::string_view title, void* owner) {
  const OleSession session;
  const HWND window = static_cast<HWND>(owner);
  void* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog, &made)))
    return choose_in_tree(title, window);
  const std::unique_ptr<IFileOpenDialog, ReleaseObject> dialog(static_cast<IFileOpenDialog*>(made));
  FILEOPENDIALOGOPTIONS options = 0;
  IShellItem* chosen = nullptr;
  dialog->GetOptions(&options);
  dialog->SetOptions(options | FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST | FOS_NOCHANGEDIR);
  dialog->SetTitle(wide(title).c_str());
  if (FAILED(dialog->Show(window)) || FAILED(dialog->GetResult(&chosen))) return std::nullopt;
  const std::unique_ptr<IShellItem, ReleaseObject> item(chosen);
  wchar_t* path = nullptr;
  if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path))) return std::nullopt;
  const std::unique_ptr<wchar_t, FreeTaskMemory> owned(path);
  return narrow(path);
}

bool is_network_path(std::string_view path) {
  auto* const is_network = system_function<decltype(PathIsNetworkPathW)>(L"shlwapi.dll", "PathIsNetworkPathW");
  return is_network != nullptr && is_network(wide(path).c_str()) != 0;
}

}  // namespace support
