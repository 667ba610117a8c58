// Registers the component for the test run, and the stand-in for ADO if it lies beside the program.
#include <algorithm>
#include <cstdio>
#include <gmock/gmock.h>
#include <memory>
#include <string_view>
#include <vector>

#include "system/com/component.h"
#include "system/com/holding_process.h"
#include "system/com/host_registration.h"
#include "system/com/neighbour.h"

namespace {

class RegisteredComponent : public testing::Environment {
 public:
  explicit RegisteredComponent(bool wanted) : wanted_(wanted) {}

  void SetUp() override {
    CoInitialize(nullptr);
    const system_tests::Module component(system_tests::DllPath());
    ASSERT_TRUE(component.loaded());
    ASSERT_HRESULT_SUCCEEDED(wanted_ ? component.RegisterServer() : S_OK);
    const system_tests::Module ado(system_tests::AdoPath());
    if (ado.loaded()) {
      ASSERT_HRESULT_SUCCEEDED(ado.RegisterServer());
    }
  }
  void TearDown() override {
    const system_tests::Module component(system_tests::DllPath());
    EXPECT_HRESULT_SUCCEEDED(wanted_ ? component.UnregisterServer() : S_OK);
    CoUninitialize();
  }

 private:
  bool wanted_;
};

// A window or class left by one test would disturb the next.
class CleanDesktop : public testing::EmptyTestEventListener {
 public:
  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    system_tests::EndNotificationWindows();
  }
};

using Arguments = std::vector<std::string_view>;

bool Has(const Arguments& arguments, std::string_view option) {
  return std::ranges::find(arguments, option) != arguments.end();
}

// The tests change this computer's registry.
bool MayRunHere(const Arguments& arguments) {
  const bool isWine =
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr &&
      !Has(arguments, "--as-in-windows");
  return isWine || Has(arguments, "--change-this-computer") ||
         GetEnvironmentVariableW(L"VILNOR_FIELD_TESTS", nullptr, 0) != 0;
}

}  // namespace

// --beside-neighbour: all tests with a shared unwinder loaded first. --registration-free: the
// component is not registered, a manifest beside the program replaces that. On a Windows, they run
// for the field tests or with --change-this-computer; --as-in-windows: so in Wine, too.
int main(int argc, char** argv) {
  if (system_tests::RanAsLinkProgram() ||
      system_tests::RanAsHoldingProcess({argv + 1, argv + argc})) {
    return 0;
  }
  testing::InitGoogleMock(&argc, argv);
  const Arguments arguments(argv + 1, argv + argc);
  if (!MayRunHere(arguments)) {
    std::fputs(
        "These tests change the registry of this computer. Start run.cmd, which puts it back.\n",
        stderr);
    return 2;
  }
  if (Has(arguments, "--beside-neighbour") &&
      LoadLibraryW(system_tests::NeighbourPath().c_str()) == nullptr) {
    return 1;
  }
  const bool registered = !Has(arguments, "--registration-free");
  testing::AddGlobalTestEnvironment(std::make_unique<RegisteredComponent>(registered).release());
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<CleanDesktop>().release());
  return RUN_ALL_TESTS();
}
