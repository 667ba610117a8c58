#include "system/com/registry_tree.h"

#include <array>
#include <vector>

namespace system_tests {
namespace {

using Tree = std::map<std::wstring, std::wstring>;

constexpr DWORD kLongestName = 16384;

std::wstring Text(HKEY key, const std::wstring& subkey, const std::wstring& name) {
  std::array<wchar_t, 1024> text{};
  DWORD bytes = sizeof text;
  RegGetValueW(key, subkey.empty() ? nullptr : subkey.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
               text.data(), &bytes);
  return text.data();
}

void Collect(HKEY key, const std::wstring& path, Tree& tree) {
  std::vector<wchar_t> name(kLongestName);
  for (DWORD index = 0;; ++index) {
    DWORD length = kLongestName;
    if (RegEnumValueW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      break;
    }
    tree[path + L"|" + name.data()] = Text(key, {}, name.data());
  }
  for (DWORD index = 0;; ++index) {
    DWORD length = kLongestName;
    if (RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      break;
    }
    const std::wstring child = path + L"\\" + name.data();
    tree[child];
    HKEY opened = nullptr;
    if (RegOpenKeyExW(key, name.data(), 0, KEY_READ, &opened) == ERROR_SUCCESS) {
      Collect(opened, child, tree);
      RegCloseKey(opened);
    }
  }
}

}  // namespace

Tree ClassesTree(const std::wstring& key) {
  Tree tree;
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &opened) == ERROR_SUCCESS) {
    Collect(opened, key, tree);
    RegCloseKey(opened);
  }
  return tree;
}

std::wstring ClassesText(const std::wstring& key, const std::wstring& name) {
  return Text(HKEY_CLASSES_ROOT, key, name);
}

}  // namespace system_tests
