// Errors beside another DLL's shared unwinder. If it has the unwind tables of our DLLs, the first
// exception ends the whole test program.
#include "system/com/neighbour.h"

#include <functional>
#include <gmock/gmock.h>

#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/copied_dll.h"

namespace system_tests {
namespace {

// An error returned to the host, one shown to the user, and one that passes through two DLLs.
void MakeVilnorFail(const std::wstring& path) {
  const Module dll(path);
  ComPtr<IClassFactory> factory;
  ComPtr<_BVilnor> session;
  ASSERT_EQ(dll.GetClassObject(CLSID_BVilnor, IID_IClassFactory, factory.ReceiveVoid()), S_OK);
  ASSERT_EQ(factory->CreateInstance(nullptr, IID__BVilnor, session.ReceiveVoid()), S_OK);
  EXPECT_EQ(session->OpenExistCase(nullptr), E_POINTER);
  const BoxAnswerer boxes;
  Init(*session.get(), u"Driver=There is no such driver");
  long id = 1;
  VARIANT_BOOL exists = VARIANT_TRUE;
  EXPECT_EQ(session->FHPExists(&id, &exists), S_OK);
  EXPECT_THAT(boxes.Texts(), testing::ElementsAre(testing::EndsWith(L" in FHPExists")));
}

void MakeAdoFail(const std::wstring& path) {
  constexpr CLSID kConnection = {
      0x00000514, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
  constexpr DISPID kCommitTrans = 7;
  const Module dll(path);
  ComPtr<IClassFactory> factory;
  ComPtr<IDispatch> connection;
  ASSERT_EQ(dll.GetClassObject(kConnection, IID_IClassFactory, factory.ReceiveVoid()), S_OK);
  ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, connection.ReceiveVoid()), S_OK);
  std::wstring name = L"CommitTrans";
  LPOLESTR names = name.data();
  DISPID member = kCommitTrans;
  ASSERT_EQ(connection->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member), S_OK);
  DISPPARAMS none{};
  EXPECT_EQ(connection->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                               nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
}

struct Library {
  const char* name;
  std::function<std::wstring()> original;
  std::function<void(const std::wstring&)> makeFail;
};

void PrintTo(const Library& library, std::ostream* stream) {
  *stream << library.name;
}

class Neighbour : public testing::TestWithParam<Library> {
 protected:
  void Load() {
    neighbour_ = LoadLibraryW(NeighbourPath().c_str());
    ASSERT_NE(neighbour_, nullptr);
    ASSERT_NE(GetModuleHandleW(kNeighbour), nullptr);
  }
  // Repeated until it is unloaded: it holds a reference to itself.
  void Unload() {
    constexpr int kOwnAndTheTests = 2;
    for (int i = 0; i < kOwnAndTheTests && !stays_; ++i) {
      FreeLibrary(neighbour_);
    }
    EXPECT_EQ(GetModuleHandleW(kNeighbour) != nullptr, stays_);
  }
  void Fail() const { GetParam().makeFail(file_.path()); }

  const CopiedDll file_{GetParam().original()};
  // Loaded for the whole run, when the program was started that way.
  const bool stays_ = GetModuleHandleW(kNeighbour) != nullptr;

 private:
  HMODULE neighbour_ = nullptr;
};

TEST_P(Neighbour, DllLoadedEarlierAndUnloadedAgainCausesNoError) {
  Load();
  Fail();
  Unload();
  Fail();
}

TEST_P(Neighbour, DllLoadedLaterAndUnloadedAgainCausesNoError) {
  Fail();
  Load();
  Fail();
  Unload();
  Fail();
}

TEST_P(Neighbour, DllLoadedWhenTheComponentIsFreedCausesNoErrorAtTheNextLoad) {
  for (int i = 0; i < 2; ++i) {
    Load();
    {
      const Module dll(file_.path());
      ASSERT_TRUE(dll.loaded());
    }
    ASSERT_FALSE(file_.IsLoaded());
    Unload();
  }
  Fail();
}

INSTANTIATE_TEST_SUITE_P(Of, Neighbour,
                         testing::Values(Library{"Vilnor", DllPath, MakeVilnorFail},
                                         Library{"AdoOdbc", AdoPath, MakeAdoFail}),
                         [](const auto& library) { return library.param.name; });

}  // namespace
}  // namespace system_tests
