// A request while the answer to an older one is still unread.
#include <filesystem>

#include "unit/fhp/fixture.h"
#include "unit/host/host_fixture.h"

namespace host {
namespace {

using Texts = std::vector<std::u16string>;

// The operations whose requests are answered, with the files of request and answer.
struct Answered {
  const char16_t* request;
  const char16_t* result;
  const char* aside;
  const char16_t* writer;
};

constexpr Answered kNewCase = {u"InNewCase4711.xml", u"OutNewCase4711.xml",
                               "OutNewCase4711 2026-11-16 14.05.00.xml", u"WriteNewCase"};
constexpr Answered kExistCase = {u"InExistCase7.xml", u"OutExistCase7.xml",
                                 "OutExistCase7 2026-11-16 14.05.00.xml", u"WriteExistCase"};
constexpr Answered kNewFHP = {u"InNewFHP8.xml", u"OutNewFHP8.xml",
                              "OutNewFHP8 2026-11-16 14.05.00.xml", u"WriteNewFHP"};

class Renaming : public native::LocalFiles {
 public:
  void RenameFile(const std::u16string& /*path*/, const std::u16string& /*newPath*/) override {
    throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
  }
};

template <class Fixture>
class UnreadOn : public HostOn<Fixture> {
 protected:
  // `open` sends the request.
  template <class Open>
  void ExpectSetAside(const Answered& answered, Open open) {
    this->Put(answered.result, "unread");
    open();
    EXPECT_FALSE(this->Exists(answered.result));
    EXPECT_EQ(this->Contents(automation::FromUtf8(answered.aside)), "unread");
    EXPECT_TRUE(this->dialogs.shown.empty());
    EXPECT_EQ(this->processes.started, this->Started(answered.request));
  }

  // Nothing is written while the older answer cannot be set aside; `started` is the command line.
  template <class Open>
  void ExpectRefusal(const Answered& answered, const Texts& started, Open open) {
    Renaming refusing;
    platform::Platform changed = fakes::With(this->ports, refusing);
    platform::Use(changed);
    this->Put(answered.result, "unread");
    this->Put(answered.request, "older");
    open();
    platform::Use(this->ports);
    EXPECT_EQ(this->dialogs.Texts(),
              Texts{u"70 Permission denied in " + std::u16string(answered.writer)});
    EXPECT_EQ(this->Contents(answered.result), "unread");
    EXPECT_EQ(this->Contents(answered.request), "older");
    EXPECT_EQ(this->processes.started, started);
  }
};

class UnreadResult : public UnreadOn<BVilnorTest> {};

TEST_F(UnreadResult, UnreadResultIsSetAsideBeforeANewCaseOfThePatient) {
  ExpectSetAside(kNewCase, [&] { vilnor.OpenWithNewCase(4711, 12, 3); });
}

TEST_F(UnreadResult, UnreadResultIsSetAsideBeforeTheCaseIsOpenedAgain) {
  ExpectSetAside(kExistCase, [&] { vilnor.OpenExistCase(7); });
}

TEST_F(UnreadResult, UnreadResultOfAnotherKeyOrKindStays) {
  const auto others = {u"OutNewCase471.xml", u"OutNewCase47110.xml", u"OutNewFHP4711.xml",
                       u"OutExistCase4711.xml"};
  for (const auto* other : others) {
    Put(other, "unread");
  }
  vilnor.OpenWithNewCase(4711, 12, 3);
  vilnor.OpenSearchPatient(4711);
  for (const auto* other : others) {
    EXPECT_EQ(Contents(other), "unread");
  }
}

TEST_F(UnreadResult, StuckUnreadResultIsNotOverwrittenByANewCase) {
  // Kept: a request that could not be written starts the program without one.
  ExpectRefusal(kNewCase, {u"C:\\Link\\Link.exe"}, [&] { vilnor.OpenWithNewCase(4711, 12, 3); });
}

TEST_F(UnreadResult, StuckUnreadResultIsNotOverwrittenByAnExistingCase) {
  ExpectRefusal(kExistCase, {u"C:\\Link\\Link.exe"}, [&] { vilnor.OpenExistCase(7); });
}

class UnreadApplication : public UnreadOn<fhp::FhpFixture> {};

TEST_F(UnreadApplication, UnreadApplicationResultIsSetAsideBeforeItIsSentAgain) {
  Script();
  ExpectSetAside(kNewFHP, [&] { vilnor.OpenWithNewFHP(5, 6, 7, 8); });
}

TEST_F(UnreadApplication, StuckUnreadApplicationResultIsNotOverwritten) {
  Script();
  ExpectRefusal(kNewFHP, {}, [&] { vilnor.OpenWithNewFHP(5, 6, 7, 8); });
}

}  // namespace
}  // namespace host
