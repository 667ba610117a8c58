// Notifications to the real window while a question is open.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/host_registration.h"

namespace system_tests {
namespace {

constexpr UINT kNewCaseReady = 10002;
constexpr UINT kExistCaseReady = 10009;

class Notifications : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(session_);
    Init(*session_.get(), database_.ConnectionString());
    database_.Execute(
        u"INSERT INTO Vilnor (VilnorId, CaseId, CaseType, Journal_ID) VALUES (901, 'L-1', 9, 0)");
  }
  std::filesystem::path File(const wchar_t* name) const { return host_.ExchangeFolder() / name; }
  void Put(const wchar_t* name, const char* contents) const {
    std::filesystem::create_directories(host_.ExchangeFolder());
    std::ofstream(File(name), std::ios::binary) << contents;
  }
  void Post(UINT message, WPARAM key) const { PostMessageA(window_, message, key, 0); }

  HostRegistration host_;
  TestDatabase database_;
  ComPtr<_BVilnor> session_ = NewBVilnor();
  HWND window_ = NotificationWindowOf(GetCurrentThreadId());
};

TEST_F(Notifications, NotificationAtTheQuestionIsReadAndTheAnswerStillCounts) {
  Put(L"OutExistCase901.xml", "<a><Cancelled>3</Cancelled></a>");
  Put(L"OutNewCase4712.xml",
      "<a><Status>5</Status><Id>L-9</Id><UserDefData>4712&amp;12&amp;3</UserDefData></a>");
  bool readWhileAsked = false;
  const BoxAnswerer boxes(Boxes::OfThisProcess, IDYES, [&] {
    Post(kNewCaseReady, 4712);
    const ULONGLONG end = GetTickCount64() + 10'000;
    while (std::filesystem::exists(File(L"OutNewCase4712.xml")) && GetTickCount64() < end) {
      Sleep(5);
    }
    readWhileAsked = !std::filesystem::exists(File(L"OutNewCase4712.xml")) &&
                     std::filesystem::exists(File(L"OutExistCase901.xml"));
  });
  Post(kExistCaseReady, 901);
  EXPECT_TRUE(PumpUntil([&] { return !std::filesystem::exists(File(L"OutExistCase901.xml")); }));
  EXPECT_TRUE(readWhileAsked);
  EXPECT_THAT(boxes.Texts(), testing::SizeIs(1));
  EXPECT_THAT(database_.Rows(u"CaseId", u"Vilnor WHERE CaseId IN ('L-1', 'L-9')"),
              testing::ElementsAre(u"L-9"));
}

// OK is no answer to the question. The error box that follows ends with the host, too.
TEST_F(Notifications, QuestionEndedWithTheHostChangesNothing) {
  Put(L"OutExistCase901.xml", "<a><Cancelled>3</Cancelled></a>");
  const DWORD thread = GetCurrentThreadId();
  std::vector<std::wstring> texts;
  {
    const BoxAnswerer boxes(Boxes::FirstOfThisProcess, IDOK,
                            [&] { PostThreadMessageW(thread, WM_QUIT, 0, 0); });
    SendMessageA(window_, kExistCaseReady, 901, 0);
    texts = boxes.Texts();
  }
  // The host's own loop ends too, with no message left for the next test's boxes.
  int words = 0;
  MSG message{};
  while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE) {
    ++words;
  }
  EXPECT_GE(words, 1);
  ASSERT_FALSE(texts.empty());
  EXPECT_THAT(texts.front(), testing::HasSubstr(L"Ta bort kopplingen"));
  EXPECT_TRUE(std::filesystem::exists(File(L"OutExistCase901.xml")));
  EXPECT_THAT(database_.Rows(u"CaseId", u"Vilnor WHERE VilnorId = 901"),
              testing::ElementsAre(u"L-1"));
}

}  // namespace
}  // namespace system_tests
