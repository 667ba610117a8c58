// Registers the component for the run, and the stand-in for ADO where one lies beside the program.
#include <gmock/gmock.h>
#include <memory>

#include "system/com/component.h"
#include "system/com/host_registration.h"

namespace {

class RegisteredComponent : public testing::Environment {
 public:
  void SetUp() override {
    CoInitialize(nullptr);
    const system_tests::Module component(system_tests::DllPath());
    ASSERT_TRUE(component.loaded());
    ASSERT_HRESULT_SUCCEEDED(component.RegisterServer());
    const system_tests::Module ado(system_tests::ProgramFolder() + L"\\AdoOdbc.dll");
    if (ado.loaded()) {
      ASSERT_HRESULT_SUCCEEDED(ado.RegisterServer());
    }
  }
  void TearDown() override {
    const system_tests::Module component(system_tests::DllPath());
    EXPECT_HRESULT_SUCCEEDED(component.UnregisterServer());
    CoUninitialize();
  }
};

// A window or class that a test leaves would be the next one's.
class CleanDesktop : public testing::EmptyTestEventListener {
 public:
  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    system_tests::EndNotificationWindows();
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (system_tests::RanAsLinkProgram()) {
    return 0;
  }
  testing::InitGoogleMock(&argc, argv);
  testing::AddGlobalTestEnvironment(std::make_unique<RegisteredComponent>().release());
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<CleanDesktop>().release());
  return RUN_ALL_TESTS();
}
