// Registrations that fail, and registrations of other files.
#include <gmock/gmock.h>
#include <map>
#include <numeric>

#include "system/com/component.h"
#include "system/com/copied_dll.h"
#include "system/com/key_rights.h"
#include "system/com/registry_tree.h"
#include "vilnor_dll/registration.h"

namespace system_tests {
namespace {

using com::RegisteredPart;
using com::RegistryText;

const std::wstring kNewFile = L"C:\\New\\Vilnor.dll";
const std::wstring kOldFile = L"C:\\Old\\Vilnor.dll";
const std::wstring kServer = L"CLSID\\{237F4B29-1C3E-419F-AE49-B0D6EDE0F48D}\\InprocServer32";
const std::wstring kClasses = L"Software\\Classes\\";

using Tree = std::map<std::wstring, std::wstring>;

// Refuses one write or removal, counted from 0.
class RefusingClasses : public com::MachineClasses {
 public:
  LSTATUS Write(const RegistryText& entry) override {
    return writes++ == refusedWrite ? ERROR_ACCESS_DENIED : MachineClasses::Write(entry);
  }
  LSTATUS Remove(const std::wstring& key) override {
    return removals++ == refusedRemoval ? ERROR_ACCESS_DENIED : MachineClasses::Remove(key);
  }
  int writes = 0;
  int removals = 0;
  int refusedWrite = -1;
  int refusedRemoval = -1;
};

// All keys that a registration touches.
Tree Entered() {
  Tree all;
  for (const RegisteredPart& part : vilnor_dll::Registration(kNewFile)) {
    for (const auto& removed : part.removed) {
      all.merge(ClassesTree(removed.key));
    }
    if (!part.parent.empty()) {
      all.merge(ClassesTree(part.parent));
    }
  }
  return all;
}

int Writes() {
  const auto parts = vilnor_dll::Registration(kNewFile);
  return std::accumulate(parts.begin(), parts.end(), 0, [](int count, const auto& part) {
    return count + static_cast<int>(part.texts.size());
  });
}

HRESULT RegisterFile(const std::wstring& path, com::MachineClasses& classes) {
  return com::Register(vilnor_dll::Registration(path), classes);
}

HRESULT UnregisterFile(const std::wstring& path, com::MachineClasses& classes) {
  return com::Unregister(vilnor_dll::Registration(path), path, classes);
}

// Starts with nothing registered; the component is registered again at the end.
class RegistrationFaults : public testing::Test {
 protected:
  RegistrationFaults() {
    EXPECT_EQ(component_.UnregisterServer(), S_OK);
    EXPECT_THAT(Entered(), testing::IsEmpty());
  }
  ~RegistrationFaults() override {
    for (const auto& [path, text] : Entered()) {
      classes_.Remove(path.substr(0, path.find(L'|')));
    }
    EXPECT_EQ(component_.RegisterServer(), S_OK);
  }

  // Refuses each of its writes in turn, and finally none.
  void ExpectEachFaultToLeave(const Tree& before) {
    for (int refused = 0; refused < Writes(); ++refused) {
      RefusingClasses classes;
      classes.refusedWrite = refused;
      EXPECT_EQ(RegisterFile(kNewFile, classes), E_ACCESSDENIED);
      EXPECT_EQ(classes.writes, refused + 1);
      EXPECT_TRUE(Entered() == before) << "write " << refused;
    }
    EXPECT_EQ(RegisterFile(kNewFile, classes_), S_OK);
    EXPECT_EQ(ClassesText(kServer), kNewFile);
  }

  Module component_{DllPath()};
  com::MachineClasses classes_;
};

TEST_F(RegistrationFaults, FailedWriteOfAFirstRegistrationLeavesNothing) {
  ExpectEachFaultToLeave({});
}

TEST_F(RegistrationFaults, FailedWriteKeepsTheOlderRegistration) {
  ASSERT_EQ(RegisterFile(kOldFile, classes_), S_OK);
  // Entries that only an older version had stay too.
  ASSERT_EQ(classes_.Write({kServer + L"\\Older", L"Value", L"kept"}), ERROR_SUCCESS);
  const auto before = Entered();
  ASSERT_FALSE(before.empty());
  ExpectEachFaultToLeave(before);
  EXPECT_EQ(ClassesText(kServer + L"\\Older", L"Value"), L"kept");
}

TEST_F(RegistrationFaults, FailedWriteRestoresValuesOfAnyType) {
  const DWORD number = 7;
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, (kClasses + kServer).c_str(), L"ThreadingModel", REG_DWORD,
                  &number, sizeof number);
  RefusingClasses classes;
  classes.refusedWrite = Writes() - 1;
  EXPECT_EQ(RegisterFile(kNewFile, classes), E_ACCESSDENIED);
  DWORD read = 0;
  DWORD size = sizeof read;
  EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, (kClasses + kServer).c_str(), L"ThreadingModel",
                         RRF_RT_REG_DWORD, nullptr, &read, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(read, number);
}

TEST_F(RegistrationFaults, FailedRemovalIsReportedAndCanBeRepeated) {
  constexpr int kRemovals = 9;
  for (int refused = 0; refused < kRemovals; ++refused) {
    ASSERT_EQ(RegisterFile(kNewFile, classes_), S_OK);
    RefusingClasses classes;
    classes.refusedRemoval = refused;
    EXPECT_EQ(UnregisterFile(kNewFile, classes), E_ACCESSDENIED) << "removal " << refused;
    EXPECT_EQ(UnregisterFile(kNewFile, classes_), S_OK);
    // Only the library's own key, which names no file, may remain.
    EXPECT_LE(Entered().size(), 1U) << "removal " << refused;
  }
}

TEST_F(RegistrationFaults, UnregisteringKeepsTheRegistrationOfAnotherFile) {
  const CopiedDll newer(DllPath());
  const Module newerComponent(newer.path());
  ASSERT_EQ(newerComponent.RegisterServer(), S_OK);
  const auto before = Entered();
  EXPECT_EQ(component_.UnregisterServer(), S_OK);
  EXPECT_TRUE(Entered() == before);
  EXPECT_EQ(ClassesText(kServer), newer.path());
  EXPECT_EQ(newerComponent.UnregisterServer(), S_OK);
  EXPECT_THAT(Entered(), testing::IsEmpty());
}

TEST_F(RegistrationFaults, UnregisteringOneClassKeepsTheOthersNewerFile) {
  ASSERT_EQ(RegisterFile(kOldFile, classes_), S_OK);
  ASSERT_EQ(classes_.Write({kServer, L"", kNewFile}), ERROR_SUCCESS);
  EXPECT_EQ(UnregisterFile(kOldFile, classes_), S_OK);
  EXPECT_EQ(ClassesText(kServer), kNewFile);
  EXPECT_EQ(ClassesText(L"Vilnor.BVilnor"), L"Vilnor.BVilnor");
  EXPECT_EQ(ClassesText(L"Vilnor.DBVilnor"), L"");
}

TEST_F(RegistrationFaults, UnregisteringKeepsEntriesOfAnotherClassOrVersion) {
  const std::wstring programClass = L"Vilnor.BVilnor\\CLSID";
  const std::wstring version = L"Interface\\{193FE857-3640-4B44-A692-1B27CB63888C}\\TypeLib";
  ASSERT_EQ(RegisterFile(kNewFile, classes_), S_OK);
  ASSERT_EQ(classes_.Write({programClass, L"", L"{another}"}), ERROR_SUCCESS);
  ASSERT_EQ(classes_.Write({version, L"Version", L"1.6"}), ERROR_SUCCESS);
  EXPECT_EQ(UnregisterFile(kNewFile, classes_), S_OK);
  EXPECT_EQ(ClassesText(programClass), L"{another}");
  EXPECT_EQ(ClassesText(version, L"Version"), L"1.6");
  EXPECT_EQ(ClassesText(kServer), L"");
}

TEST_F(RegistrationFaults, RegisteredFileIsRecognisedInAnySpelling) {
  ASSERT_EQ(RegisterFile(kNewFile, classes_), S_OK);
  EXPECT_EQ(UnregisterFile(L"c:\\NEW\\vilnor.DLL", classes_), S_OK);
  EXPECT_THAT(Entered(), testing::IsEmpty());
}

TEST_F(RegistrationFaults, RegisteringWithoutTheRightGivesAccessDenied) {
  ASSERT_EQ(RegisterFile(kOldFile, classes_), S_OK);
  const auto before = Entered();
  {
    const KeyRights refused(HKEY_LOCAL_MACHINE, kClasses + kServer, kReading);
    EXPECT_EQ(component_.RegisterServer(), E_ACCESSDENIED);
  }
  EXPECT_TRUE(Entered() == before);
}

}  // namespace
}  // namespace system_tests
