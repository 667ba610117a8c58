#include <gmock/gmock.h>

#include "com/win32.h"
#include "system/windows/noting_program.h"

int main(int argc, char** argv) {
  if (system_tests::RanAsNotingProgram()) {
    return 0;
  }
  testing::InitGoogleMock(&argc, argv);
  CoInitialize(nullptr);
  const int result = RUN_ALL_TESTS();
  CoUninitialize();
  return result;
}
