// Two threads with an apartment each: their own sessions, and calls between them.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "com/wide_text.h"
#include "system/com/apartment.h"
#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/host_registration.h"

namespace system_tests {
namespace {

// The description of the error when a DBVilnor cannot be created; "" when it can.
std::wstring CreationError() {
  ComPtr<_DBVilnor> object;
  SetErrorInfo(0, nullptr);
  const HRESULT result = CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER,
                                          IID__DBVilnor, object.ReceiveVoid());
  return SUCCEEDED(result) ? L"" : TakeErrorInformation().description;
}

TEST(Apartments, EachApartmentHasItsOwnSessionSettingsAndConnection) {
  TestDatabase database;
  Apartment first;
  Apartment second;
  ComPtr<_BVilnor> firstSession;
  ComPtr<_BVilnor> secondSession;
  std::wstring firstError = L"not run";
  std::wstring secondError;
  ASSERT_TRUE(first.Do([&] {
    firstSession = NewBVilnor();
    Init(*firstSession.get(), database.ConnectionString());
  }));
  ASSERT_TRUE(second.Do([&] {
    secondSession = NewBVilnor();
    Init(*secondSession.get(), u"Driver=There is no such driver");
    secondError = CreationError();
  }));
  ASSERT_TRUE(first.Do([&] { firstError = CreationError(); }));
  EXPECT_EQ(firstError, L"");
  EXPECT_NE(secondError, L"");
  ASSERT_TRUE(first.Do([&] { firstSession = {}; }));
  ASSERT_TRUE(second.Do([&] { secondSession = {}; }));
}

// A connection that a second apartment opens and releases is not the first one's.
TEST(Apartments, ConnectionSurvivesThoseOfOtherApartments) {
  const BoxAnswerer boxes;
  TestDatabase database;
  Apartment first;
  Apartment second;
  ComPtr<_BVilnor> session;
  ComPtr<_DBVilnor> object;
  std::vector<std::u16string> users;
  const auto create = [] {
    ComPtr<_DBVilnor> created;
    CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__DBVilnor,
                     created.ReceiveVoid());
    return created;
  };
  const auto readUser = [&](_DBVilnor& reader) {
    long pid = 5012;
    Bstr user;
    EXPECT_EQ(reader.GetVilnorUserByPID(&pid, user.Receive()), S_OK);
    users.push_back(user.Text());
  };
  ASSERT_TRUE(first.Do([&] {
    session = NewBVilnor();
    Init(*session.get(), database.ConnectionString());
    object = create();
  }));
  ASSERT_TRUE(object);
  ASSERT_TRUE(second.Do([&] {
    const auto otherSession = NewBVilnor();
    Init(*otherSession.get(), database.ConnectionString());
    const auto other = create();
    ASSERT_TRUE(other);
    readUser(*other.get());
  }));
  ASSERT_TRUE(first.Do([&] {
    readUser(*object.get());
    object = {};
    session = {};
  }));
  EXPECT_THAT(users, testing::ElementsAre(u"bjorn.ek", u"bjorn.ek"));
  EXPECT_THAT(boxes.Texts(), testing::IsEmpty());
}

TEST(Apartments, EachApartmentHasItsOwnNotificationWindow) {
  Apartment first;
  Apartment second;
  ComPtr<_BVilnor> firstSession;
  ComPtr<_BVilnor> secondSession;
  ASSERT_TRUE(first.Do([&] { firstSession = NewBVilnor(); }));
  ASSERT_TRUE(second.Do([&] { secondSession = NewBVilnor(); }));
  EXPECT_EQ(NotificationWindows(), 2);
  ASSERT_TRUE(first.Do([&] { firstSession = {}; }));
  EXPECT_EQ(NotificationWindows(), 1);
  ASSERT_TRUE(second.Do([&] { secondSession = {}; }));
  EXPECT_EQ(NotificationWindows(), 0);
}

// Its own settings are empty, whatever the other apartment has set.
TEST(Apartments, ApartmentWithoutSettingsReportsANotificationAndKeepsItsResult) {
  constexpr UINT kNewCaseReady = 10002;
  const BoxAnswerer boxes;
  const HostRegistration host;
  TestDatabase database;
  const auto result = host.ExchangeFolder() / L"OutNewCase4712.xml";
  std::ofstream(result, std::ios::binary)
      << "<a><Status>5</Status><Id>L-9</Id><UserDefData>4712&amp;12&amp;3</UserDefData></a>";
  Apartment first;
  Apartment second;
  ComPtr<_BVilnor> session;
  ComPtr<_BVilnor> withoutSettings;
  HWND window = nullptr;
  HWND windowWithoutSettings = nullptr;
  ASSERT_TRUE(first.Do([&] {
    session = NewBVilnor();
    Init(*session.get(), database.ConnectionString());
    window = NotificationWindowHandles().front();
  }));
  ASSERT_TRUE(second.Do([&] {
    withoutSettings = NewBVilnor();
    windowWithoutSettings = NotificationWindowOf(GetCurrentThreadId());
  }));
  SendMessageA(windowWithoutSettings, kNewCaseReady, 4712, 0);
  EXPECT_THAT(boxes.Texts(), testing::ElementsAre(testing::EndsWith(L" in ReadNewCase")));
  EXPECT_TRUE(std::filesystem::exists(result));

  SendMessageA(window, kNewCaseReady, 4712, 0);
  EXPECT_THAT(boxes.Texts(), testing::SizeIs(1));
  EXPECT_FALSE(std::filesystem::exists(result));
  EXPECT_THAT(database.Rows(u"CaseId", u"Vilnor WHERE CaseId = 'L-9'"),
              testing::ElementsAre(u"L-9"));
  ASSERT_TRUE(second.Do([&] {
    withoutSettings = {};
    EndNotificationWindows();
  }));
  ASSERT_TRUE(first.Do([&] {
    session = {};
    EndNotificationWindows();
  }));
}

TEST(Apartments, CallsBetweenApartmentsUseTheTypeLibraryMarshaller) {
  Apartment home;
  ComPtr<_BVilnor> session;
  ComPtr<IStream> passage;
  HRESULT marshalled = E_FAIL;
  ASSERT_TRUE(home.Do([&] {
    session = NewBVilnor();
    marshalled =
        CoMarshalInterThreadInterfaceInStream(IID__BVilnor, session.get(), passage.Receive());
  }));
  ASSERT_EQ(marshalled, S_OK);
  ComPtr<_BVilnor> proxy;
  ASSERT_EQ(CoGetInterfaceAndReleaseStream(passage.Detach(), IID__BVilnor, proxy.ReceiveVoid()),
            S_OK);
  EXPECT_NE(proxy.get(), session.get());

  const auto folder = std::filesystem::temp_directory_path();
  long number = 77;
  TextArgument text(u"Åsa");
  const Bstr path(folder.u16string() + u".");
  Bstr request;
  EXPECT_EQ(proxy->WriteNewCase(&number, &number, &number, text.Reference(), text.Reference(),
                                text.Reference(), path.get(), request.Receive()),
            S_OK);
  EXPECT_TRUE(std::filesystem::remove(folder / L"InNewCase77.xml"));
  EXPECT_THAT(com::Wide(request.Text()), testing::EndsWith(L"\\InNewCase77.xml"));
  proxy = {};
  ASSERT_TRUE(home.Do([&] { session = {}; }));
}

}  // namespace
}  // namespace system_tests
