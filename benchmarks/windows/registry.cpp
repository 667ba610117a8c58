#include "windows/registry.h"

#include <cwchar>

#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "registry/c_registry.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

constexpr int kFewest = 250;
constexpr int kMost = 16'000;

std::u16string KeyOf(int values) {
  return u"SOFTWARE\\Kestra\\Values" + automation::Decimal10(values);
}

void MakeKey(int values) {
  HKEY key = nullptr;
  RegCreateKeyW(HKEY_LOCAL_MACHINE, com::Wide(KeyOf(values)).c_str(), &key);
  constexpr const wchar_t* kText = L"C:\\Kestra\\Vilnor";
  const auto size = static_cast<DWORD>((std::wcslen(kText) + 1) * sizeof(wchar_t));
  for (int value = 0; value < values; ++value) {
    RegSetValueExW(key, (L"Value " + std::to_wstring(value)).c_str(), 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(kText), size);
  }
  RegCloseKey(key);
}

void Load(int values) {
  registry::CRegistry key;
  key.SetRoot(registry::kLocalMachine);
  key.SetKey(KeyOf(values));
  if (key.ValueCount() != values) {
    Fail("the registry key was not loaded whole");
  }
}

}  // namespace

void MeasureRegistry(Computer& /*computer*/) {
  // Each repetition loads the same number of values, so that other work on the machine affects all
  // alike.
  std::vector<Variant> variants;
  for (int values = kFewest; values <= kMost; values *= 2) {
    MakeKey(values);
    variants.push_back({.name = std::to_string(values),
                        .run =
                            [values] {
                              for (int loaded = 0; loaded < kMost; loaded += values) {
                                Load(values);
                              }
                            },
                        .per = kMost});
  }
  Measure("registry", variants, 20, 1);
}

}  // namespace benchmarks
