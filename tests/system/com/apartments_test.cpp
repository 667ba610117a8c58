// Two threads with an apartment each: sessions of their own, and calls between them.
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>

#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/thread.h"
#include "windows/wide_text.h"

namespace system_tests {
namespace {

// A thread with an apartment and a message loop, which runs what it is given.
class Apartment {
 public:
  Apartment() { WaitForSingleObject(ready_, INFINITE); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() {
    PostThreadMessageW(thread_.id(), WM_QUIT, 0, 0);
    WaitForSingleObject(ended_, INFINITE);
    CloseHandle(ready_);
    CloseHandle(done_);
    CloseHandle(ended_);
  }

  // Runs `work` on the apartment's thread and waits for its end, dispatching this thread's
  // messages.
  bool Do(std::function<void()> work) {
    work_ = std::move(work);
    PostThreadMessageW(thread_.id(), kWork, 0, 0);
    return PumpUntil([&] { return WaitForSingleObject(done_, 0) == WAIT_OBJECT_0; });
  }

 private:
  static constexpr UINT kWork = WM_APP;

  void Run() {
    CoInitialize(nullptr);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    SetEvent(ready_);
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      if (message.hwnd == nullptr && message.message == kWork) {
        work_();
        SetEvent(done_);
      } else {
        DispatchMessageW(&message);
      }
    }
    CoUninitialize();
    SetEvent(ended_);
  }

  std::function<void()> work_;
  HANDLE ready_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE done_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE ended_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  Thread thread_{[this] { Run(); }};
};

// The description of the error with which a DBVilnor cannot be made; "" when one was made.
std::wstring CreationError() {
  ComPtr<_DBVilnor> object;
  SetErrorInfo(0, nullptr);
  const HRESULT result = CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER,
                                          IID__DBVilnor, object.ReceiveVoid());
  return SUCCEEDED(result) ? L"" : TakeErrorInformation().description;
}

TEST(Apartments, HaveSessionSettingsAndConnectionsOfTheirOwn) {
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
TEST(Apartments, KeepTheirConnectionWhileAnotherOneOpensAndReleasesItsOwn) {
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

TEST(Apartments, HaveANotificationWindowEach) {
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

TEST(Apartments, CallEachOtherThroughTheTypeLibrarysMarshaller) {
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
  EXPECT_THAT(windows::Wide(request.Text()), testing::EndsWith(L"\\InNewCase77.xml"));
  proxy = {};
  ASSERT_TRUE(home.Do([&] { session = {}; }));
}

}  // namespace
}  // namespace system_tests
