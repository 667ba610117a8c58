#include "host/notification_window.h"

#include <functional>
#include <thread>
#include <utility>

#include "unit/host/host_fixture.h"

namespace host {
namespace {

using Texts = std::vector<std::u16string>;
using platform::Answer;
using platform::Icon;

const automation::AutomationError kServerGone{-2147467259, u"", u"server closed the connection"};

// A box during which more messages arrive, dispatched like those of a thread waiting for its user.
class DispatchingDialogs : public fakes::Dialogs {
 public:
  Answer Show(const platform::MessageBox& box) override {
    const Answer answer = fakes::Dialogs::Show(box);
    if (auto arriving = std::exchange(arrivingAtNext, {})) {
      arriving();
    }
    return answer;
  }
  std::function<void()> arrivingAtNext;
};

// Reports when a document is created.
class WatchedDocuments : public platform::ResultDocuments {
 public:
  std::unique_ptr<platform::ResultDocument> New() override {
    atNew();
    return documents_.New();
  }
  std::function<void()> atNew = [] {};

 private:
  native::XmlDocuments documents_;
};

class NotificationWindow : public BVilnorTest {
 protected:
  // On its own thread, where no notification has arrived yet, with its own windows.
  template <class Body>
  void OnFreshThread(Body body) {
    std::thread([&] {
      platform::Use(watched_);
      util::CurrentSettings().gDbType = 1;
      body();
      platform::ForgetThreadState();
    }).join();
  }
  void AnswerLink() {
    database.Answer(u"SELECT * FROM Vilnor WHERE VilnorId = 4711", {{u"CaseId"}, {{u"L-LINK"}}});
    database.AnswerInTurn(u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-LINK'",
                          {{{u"VilnorID", u"Journal_ID"}, {{std::int32_t{77}, std::int32_t{900}}}},
                           {{u"VilnorID", u"Journal_ID"}, {}}});
  }
  static std::string SentCase() {
    return "<a><Status>5</Status><Id>L-9</Id><UserDefData>4712&amp;12&amp;3</UserDefData></a>";
  }

  fakes::WindowSystem fresh_;
  DispatchingDialogs user_;
  WatchedDocuments watchedDocuments_;
  platform::Platform watched_ = fakes::With(ports, user_, watchedDocuments_, fresh_);
};

TEST_F(NotificationWindow, NotificationWindowIsHiddenTopLevelAndOfTheAnnouncedClass) {
  const platform::WindowHandle window = NotifyWnd();
  const auto& description = windows.windows.at(window);
  EXPECT_EQ(description.className, u"KestraToVilnor");
  EXPECT_EQ(description.title, u"VB Window");
  EXPECT_EQ(description.style, 0);
  EXPECT_EQ(description.extendedStyle, 0);
  EXPECT_EQ(description.x, 0);
  EXPECT_EQ(description.y, 0);
  EXPECT_EQ(description.width, 640);
  EXPECT_EQ(description.height, 480);
  EXPECT_EQ(description.parent, 0);
}

TEST_F(NotificationWindow, NotificationClassHasOnlyItsNameAndProcedure) {
  fakes::WindowSystem unused;
  platform::Platform changed = fakes::With(ports, unused);
  platform::Use(changed);
  platform::WindowClass windowClass{.style = 1,
                                    .procedure = nullptr,
                                    .classExtraBytes = 2,
                                    .windowExtraBytes = 3,
                                    .instance = 4,
                                    .icon = 5,
                                    .cursor = 6,
                                    .background = 7,
                                    .menuName = u"menu",
                                    .className = u"other"};
  EXPECT_EQ(RegClass(windowClass, &MsgHandling), 0xC001);
  EXPECT_EQ(RegClass(windowClass, &MsgHandling), 0) << "the class exists";
  for (const auto& record : {windowClass, unused.classes.at(u"KestraToVilnor")}) {
    EXPECT_EQ(record.style, 0);
    EXPECT_EQ(record.procedure, &MsgHandling);
    EXPECT_EQ(record.classExtraBytes, 0);
    EXPECT_EQ(record.windowExtraBytes, 0);
    EXPECT_EQ(record.instance, 0);
    EXPECT_EQ(record.icon, 0);
    EXPECT_EQ(record.cursor, 0);
    EXPECT_EQ(record.background, 0);
    EXPECT_EQ(record.menuName, u"");
    EXPECT_EQ(record.className, u"KestraToVilnor");
  }
  platform::Use(ports);
}

TEST_F(NotificationWindow, EveryMessageGetsItsDefaultProcessingAndResult) {
  windows.defaultResult = 42;
  const auto known = windows.windows.size();
  EXPECT_EQ(windows.Send(NotifyWnd(), 10003, 5, 6), 42);
  EXPECT_EQ(windows.defaulted.back(), std::make_tuple(NotifyWnd(), 10003, 5, 6));
  EXPECT_EQ(windows.windows.size(), known);
}

TEST_F(NotificationWindow, NotificationReachesItsReaderAfterTheDefaultProcessing) {
  OnFreshThread([&] {
    BVilnor own(events);
    const platform::WindowHandle first = NotifyWnd();
    fresh_.defaultResult = 42;
    std::vector<std::size_t> defaultedAtLoad;
    watchedDocuments_.atNew = [&] { defaultedAtLoad.push_back(fresh_.defaulted.size()); };
    struct Message {
      std::int32_t number;
      const char16_t* file;
    };
    for (const auto& message :
         {Message{10001, u"OutNewFHP4711.xml"}, Message{10002, u"OutNewCase4711.xml"},
          Message{10009, u"OutExistCase4711.xml"}}) {
      Put(message.file, "<a><Cancelled>1</Cancelled></a>");
      EXPECT_EQ(fresh_.Send(first, message.number, 4711), 42);
      EXPECT_FALSE(Exists(message.file)) << message.number;
      EXPECT_EQ(std::get<1>(fresh_.defaulted.back()), message.number);
      EXPECT_EQ(fresh_.windows.size(), 2U) << "one further window, from the first on";
      EXPECT_NE(NotifyWnd(), first);
    }
    EXPECT_EQ(defaultedAtLoad, (std::vector<std::size_t>{1, 2, 3}));
    EXPECT_GE(NotifyTargets(), 1);
    EXPECT_EQ(events.count, 0) << "the host is not connected to the object that reads";
    EXPECT_TRUE(user_.shown.empty());
  });
}

TEST_F(NotificationWindow, NotificationWindowComesAndGoesWithItsBVilnor) {
  OnFreshThread([&] {
    for (int i = 0; i < 1000; ++i) {
      const BVilnor own(events);
      EXPECT_EQ(fresh_.windows.size(), 1U);
    }
    EXPECT_TRUE(fresh_.windows.empty());
    EXPECT_TRUE(fresh_.classes.empty());
    EXPECT_TRUE(user_.shown.empty());
  });
}

TEST_F(NotificationWindow, OtherNotificationWindowKeepsTheClass) {
  OnFreshThread([&] {
    const BVilnor first(events);
    { const BVilnor second(events); }
    EXPECT_EQ(fresh_.windows.size(), 1U);
    EXPECT_EQ(fresh_.classes.size(), 1U);
  });
}

TEST_F(NotificationWindow, HostsWindowOutlivesItsBVilnorAfterANotificationAndStillReads) {
  OnFreshThread([&] {
    platform::WindowHandle first = 0;
    platform::WindowHandle second = 0;
    {
      const BVilnor own(events);
      first = NotifyWnd();
      fresh_.Send(first, 10002, 4711);
      second = NotifyWnd();
    }
    EXPECT_TRUE(fresh_.windows.contains(first));
    EXPECT_FALSE(fresh_.windows.contains(second));
    EXPECT_EQ(fresh_.classes.size(), 1U);
    Put(u"OutNewCase4711.xml", "<a><Cancelled>1</Cancelled></a>");
    fresh_.Send(first, 10002, 4711);
    EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
    EXPECT_TRUE(user_.shown.empty());
  });
}

// Window system calls that fail on demand.
class FailingWindows : public fakes::WindowSystem {
 public:
  std::int32_t RegisterClass(const platform::WindowClass& windowClass) override {
    Fail(registering);
    return fakes::WindowSystem::RegisterClass(windowClass);
  }
  platform::WindowHandle CreateWindow(const platform::WindowDescription& description) override {
    Fail(creating);
    return fakes::WindowSystem::CreateWindow(description);
  }
  bool DestroyWindow(platform::WindowHandle window) override {
    Fail(destroying);
    return fakes::WindowSystem::DestroyWindow(window);
  }
  std::int32_t DefaultProcedure(platform::WindowHandle window, std::int32_t message,
                                std::int32_t wParam, std::int32_t lParam) override {
    Fail(processing);
    return fakes::WindowSystem::DefaultProcedure(window, message, wParam, lParam);
  }
  bool registering = false;
  bool creating = false;
  bool destroying = false;
  bool processing = false;

 private:
  static void Fail(bool fails) {
    if (fails) {
      throw automation::AutomationError(automation::RuntimeError::OutOfMemory);
    }
  }
};

class FailingNotificationWindow : public NotificationWindow {
 protected:
  FailingNotificationWindow() { platform::Use(failing_); }
  ~FailingNotificationWindow() override { platform::Use(ports); }
  void ExpectBox(const std::u16string& place) {
    EXPECT_EQ(dialogs.shown,
              (std::vector<platform::MessageBox>{{.text = u"7 Out of memory in " + place,
                                                  .title = u"Vilnor Link connection",
                                                  .icon = Icon::Critical}}));
    dialogs.shown.clear();
  }
  FailingWindows failingWindows_;
  platform::Platform failing_ = fakes::With(ports, failingWindows_);
};

TEST_F(FailingNotificationWindow, FailingWindowProcedureIsReportedUnderItsName) {
  platform::WindowClass windowClass;
  failingWindows_.registering = true;
  EXPECT_EQ(RegClass(windowClass, MsgHandling), 0);
  ExpectBox(u"RegClass");
  failingWindows_.registering = false;
  failingWindows_.creating = true;
  EXPECT_EQ(CreateForm(), 0);
  ExpectBox(u"CreateForm");
  failingWindows_.destroying = true;
  DestroyForm(1);
  ExpectBox(u"DestroyForm");
  failingWindows_.processing = true;
  EXPECT_EQ(MsgHandling(1, 10002, 4711, 0), 0);
  ExpectBox(u"MsgHandling");
}

TEST_F(FailingNotificationWindow, FailingReaderKeepsTheDefaultResult) {
  std::thread([&] {
    failingWindows_.defaultResult = 42;
    // The readers' work fails inside their own traps, which also ignore a box that cannot be shown.
    class NoDialogs : public fakes::Dialogs {
     public:
      Answer Show(const platform::MessageBox& box) override {
        const Answer answer = fakes::Dialogs::Show(box);
        if (shown.size() == 1) {
          throw automation::AutomationError(automation::RuntimeError::OutOfMemory);
        }
        return answer;
      }
    } noDialogs;
    platform::Platform changed = fakes::With(ports, noDialogs, failingWindows_);
    platform::Use(changed);
    database.installed = false;
    Put(u"OutNewCase4711.xml", SentCase());
    EXPECT_EQ(MsgHandling(1, 10002, 4711, 0), 42);
    EXPECT_EQ(noDialogs.Texts(),
              Texts{u"429 ActiveX component can't create object in ReadNewCase"});
  }).join();
}

// A second notification while the first one's reader waits for the user.
class SecondNotification : public NotificationWindow {
 protected:
  void Send(std::int32_t message, std::int32_t key) { fresh_.Send(window_, message, key); }
  template <class Body>
  void WithWindow(Body body) {
    OnFreshThread([&] {
      const BVilnor own(events);
      window_ = NotifyWnd();
      body();
    });
  }
  platform::WindowHandle window_ = 0;
};

TEST_F(SecondNotification, SecondNotificationAtTheQuestionIsReadAndTheAnswerHolds) {
  WithWindow([&] {
    AnswerLink();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    Put(u"OutExistCase4711.xml", "<a><Cancelled>3</Cancelled></a>");
    Put(u"OutNewCase4712.xml", SentCase());
    user_.answers = {Answer::Yes};
    user_.arrivingAtNext = [&] {
      Send(10002, 4712);
      EXPECT_FALSE(Exists(u"OutNewCase4712.xml"));
      EXPECT_EQ(database.LogOf(u"Execute -1: Insert into Vilnor").size(), 1U);
      EXPECT_EQ(database.LogOf(u"Execute -1: Delete").size(), 0U);
    };
    Send(10009, 4711);
    EXPECT_EQ(user_.shown.size(), 1U);
    EXPECT_EQ(database.LogOf(u"Execute -1: Delete"),
              (Texts{u"Execute -1: Delete from Journal where id = 900",
                     u"Execute -1: Delete from Vilnor where Vilnorid = 77"}));
    EXPECT_FALSE(Exists(u"OutExistCase4711.xml"));
    EXPECT_EQ(database.AliveConnections(), 0);
  });
}

TEST_F(SecondNotification, FailedSecondNotificationAtTheQuestionLeavesTheAnswersFile) {
  WithWindow([&] {
    AnswerLink();
    Put(u"OutExistCase4711.xml", "<a><Cancelled>3</Cancelled></a>");
    Put(u"OutNewCase4712.xml", "<a><Status>x</Status></a>");
    user_.answers = {Answer::Yes};
    user_.arrivingAtNext = [&] { Send(10002, 4712); };
    Send(10009, 4711);
    EXPECT_EQ(user_.Texts().back(), u"13 Type mismatch in XMLReadNewCase");
    EXPECT_FALSE(Exists(u"OutExistCase4711.xml"));
    EXPECT_TRUE(Exists(u"OutNewCase4712.xml"));
  });
}

TEST_F(SecondNotification, SecondNotificationAtADatabaseBoxLosesNeitherResult) {
  WithWindow([&] {
    database.Answer(u"SELECT Journal_ID from Vilnor Where PID= 4711 AND CaseType = 9",
                    {{u"Journal_ID"}, {{std::int32_t{900}}}});
    database.Answer(u"SELECT Tekst from Journal Where ID = 900", {{u"Tekst"}, {{u"ref !L-OLD"}}});
    database.FailStatement(u"Update Vilnor", kServerGone);
    Put(u"OutNewCase4711.xml",
        "<a><Status>1</Status><Id>L-9</Id><UserDefData>4711&amp;12&amp;3</UserDefData></a>");
    Put(u"OutNewCase4712.xml", SentCase());
    user_.arrivingAtNext = [&] { Send(10002, 4712); };
    Send(10002, 4711);
    EXPECT_EQ(user_.Texts(),
              (Texts{u"-2147467259 server closed the connection in UpdateCase",
                     u"3705 Operation is not allowed when the object is open. in ReadNewCase"}));
    EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
    EXPECT_TRUE(Exists(u"OutNewCase4711 2026-11-16 14.05.00.xml"));
    EXPECT_TRUE(Exists(u"OutNewCase4712.xml"));
    EXPECT_FALSE(database.InTransaction());
    EXPECT_EQ(database.AliveConnections(), 0);

    // Nothing is stuck: both are read when they exist and are announced again.
    files.RenameFile(ExchangePath(u"OutNewCase4711 2026-11-16 14.05.00.xml"),
                     ExchangePath(u"OutNewCase4711.xml"));
    database.ClearFailures();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    Send(10002, 4711);
    Send(10002, 4712);
    EXPECT_EQ(user_.shown.size(), 2U);
    EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
    EXPECT_FALSE(Exists(u"OutNewCase4712.xml"));
  });
}

TEST_F(SecondNotification, SecondNotificationOfTheSameCaseAsksAgainAndTheFirstFindsNoFile) {
  WithWindow([&] {
    AnswerLink();
    Put(u"OutExistCase4711.xml", "<a><Cancelled>3</Cancelled></a>");
    user_.answers = {Answer::Yes, Answer::Yes};
    user_.arrivingAtNext = [&] {
      Send(10009, 4711);
      EXPECT_FALSE(Exists(u"OutExistCase4711.xml"));
    };
    Send(10009, 4711);
    ASSERT_EQ(user_.shown.size(), 3U);
    EXPECT_EQ(user_.shown[0], user_.shown[1]);
    EXPECT_EQ(user_.shown[2].text, u"53 File not found in ReadExistCase");
    EXPECT_EQ(database.LogOf(u"Execute -1: Delete from Vilnor"),
              (Texts{u"Execute -1: Delete from Vilnor where Vilnorid = 77",
                     u"Execute -1: Delete from Vilnor where Vilnorid = 0"}));
    EXPECT_EQ(database.AliveConnections(), 0);
  });
}

}  // namespace
}  // namespace host
