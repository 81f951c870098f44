// Functions of libraries that few starts need. Loaded with the program, each of these libraries would delay every
// start.
#pragma once

#include <windows.h>

namespace support {

/// The function, from the system's folder; null where this Windows lacks it. The library stays loaded.
template <typename Function>
Function* system_function(const wchar_t* library, const char* name) {
  const HMODULE loaded = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  return loaded == nullptr ? nullptr
                           : reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(loaded, name)));
}

}  // namespace support
