#include <windows.h>

#include <stdexcept>

#include "library/dynamic_library.h"

DynamicLibrary::DynamicLibrary(const std::string& file) : handle_(LoadLibraryA(file.c_str())) {
  if (handle_ == nullptr) {
    throw std::runtime_error(file + ": error " + std::to_string(GetLastError()));
  }
}

DynamicLibrary::~DynamicLibrary() { FreeLibrary(static_cast<HMODULE>(handle_)); }

DynamicLibrary::Address DynamicLibrary::FindAddress(const char* name) const {
  return reinterpret_cast<Address>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

bool IsLoaded(const std::string& name) { return GetModuleHandleA(name.c_str()) != nullptr; }
