// DLLs that a test loads and frees with their own reference counts.
#pragma once

#include <filesystem>
#include <string>

#include "com/win32.h"

namespace system_tests {

// A new copy of a DLL under another name, deleted with the object unless it stays loaded.
class CopiedDll {
 public:
  explicit CopiedDll(const std::wstring& original) {
    std::filesystem::copy_file(original, path_, std::filesystem::copy_options::overwrite_existing);
  }
  CopiedDll(const CopiedDll&) = delete;
  CopiedDll& operator=(const CopiedDll&) = delete;
  ~CopiedDll() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }

  std::wstring path() const { return path_.wstring(); }
  bool IsLoaded() const { return GetModuleHandleW(path().c_str()) != nullptr; }
  // Frees it as COM frees a server, whatever it answers, until it is unloaded or proves to stay
  // loaded.
  void Free() const {
    constexpr int kMoreOftenThanItWasLoaded = 100;
    for (int i = 0; i < kMoreOftenThanItWasLoaded && IsLoaded(); ++i) {
      FreeLibrary(GetModuleHandleW(path().c_str()));
    }
  }

 private:
  inline static int count_ = 0;

  std::filesystem::path path_ =
      std::filesystem::temp_directory_path() / (L"Copy" + std::to_wstring(++count_) + L".dll");
};

}  // namespace system_tests
