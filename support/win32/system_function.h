// Functions of libraries that few runs need. If such a library were loaded with the program, it would delay every
// start.
#pragma once

#include <windows.h>

namespace support {

/// The function, from a library in the system's folder; null if this Windows does not have it. The library stays
/// loaded.
template <typename Function>
Function* system_function(const wchar_t* library, const char* name) {
  const HMODULE loaded = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  return loaded == nullptr ? nullptr
                           : reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(loaded, name)));
}

}  // namespace support
