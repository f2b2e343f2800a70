// Loading and unloading of shared libraries, the same on every platform.
#pragma once

#include <string>

// A library that is loaded while this object lives.
class DynamicLibrary {
 public:
  // Throws std::runtime_error with the platform's reason where the library cannot be loaded.
  explicit DynamicLibrary(const std::string& file);
  ~DynamicLibrary();
  DynamicLibrary(const DynamicLibrary&) = delete;
  DynamicLibrary& operator=(const DynamicLibrary&) = delete;

  // Returns the function of that name, null where there is none.
  template <class Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(FindAddress(name));
  }

 private:
  using Address = void (*)();
  Address FindAddress(const char* name) const;

  void* handle_;
};

// Whether a library of that name is loaded in this process, whoever loaded it.
bool IsLoaded(const std::string& name);
