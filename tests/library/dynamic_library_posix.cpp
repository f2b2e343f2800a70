#include <dlfcn.h>

#include <stdexcept>

#include "library/dynamic_library.h"

DynamicLibrary::DynamicLibrary(const std::string& file) : handle_(dlopen(file.c_str(), RTLD_NOW)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
}

DynamicLibrary::~DynamicLibrary() { dlclose(handle_); }

DynamicLibrary::Address DynamicLibrary::FindAddress(const char* name) const {
  return reinterpret_cast<Address>(dlsym(handle_, name));
}

bool IsLoaded(const std::string& name) {
  void* const handle = dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}
