#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <optional>

#include "parser_limits/parser_limits.h"
#include "unit/exchange/result_fixture.h"

namespace exchange {
namespace {

struct Cell {
  Reader reader;
  std::optional<std::string> cancelled;
  std::optional<std::string> status;
  bool recordExists;
  Answer answer;
};

// The expected effects of a cell, derived from the rules and not from the code.
struct Expected {
  Statements changes = {};
  bool asks = false;
  int updateJournals = 0;
  bool fileDeleted = false;
};

Expected ExpectedOfNew(const Cell& cell, bool application) {
  if (cell.cancelled == "1") {
    return {.fileDeleted = true};
  }
  if (cell.status == "1") {
    const std::u16string where = application ? u" Where FHP_ID= 4711 AND CaseType = 1"
                                             : u" Where PID = 4711 AND CaseType = 9";
    return {{u"Update Vilnor SET CaseId = L-9, StatusCode = 1" + where,
             u"Update Journal set Tekst = 'Ärende ref.nr L-9' Where ID = 900"},
            false,
            1,
            true};
  }
  if (cell.status == "5") {
    return {cell.recordExists ? Statements() : Insertion(application), false, 1, true};
  }
  if (cell.status == "7") {
    return {cell.recordExists ? Deletion(true) : Statements(), false, 1, true};
  }
  return {};
}

Expected ExpectedOfExisting(const Cell& cell) {
  if (cell.cancelled == "0" || cell.cancelled == "1" || cell.cancelled == "2") {
    return {.fileDeleted = true};
  }
  if (cell.cancelled == "3") {
    return cell.answer == Answer::Yes ? Expected{Deletion(cell.recordExists), true, 1, true}
                                      : Expected{{}, true, 0, true};
  }
  if (cell.status == "1") {
    return {{u"Update Vilnor SET CaseId = L-9, StatusCode = 1 Where VilnorId= 4711",
             u"Update Journal SET Tekst = 'Ärende ref.nr L-9' Where ID = 900"},
            false,
            1,
            true};
  }
  if (cell.status == "7") {
    return {Deletion(cell.recordExists), false, 1, true};
  }
  return {};
}

Expected ExpectedOf(const Cell& cell) {
  const std::string reader = cell.reader.name;
  return reader == "ReadExistCase" ? ExpectedOfExisting(cell)
                                   : ExpectedOfNew(cell, reader == "ReadNewFHP");
}

std::vector<Cell> EveryCell() {
  const std::optional<std::string> none;
  std::vector<Cell> cells;
  for (const auto& reader : kReaders) {
    for (const auto& cancelled :
         {none, std::optional<std::string>("0"), {"1"}, {"2"}, {"3"}, {"4"}, {"99"}, {"-1"}}) {
      for (const auto& status :
           {none, std::optional<std::string>("0"), {"1"}, {"3"}, {"5"}, {"7"}, {"8"}}) {
        for (const bool exists : {false, true}) {
          for (const auto answer : {Answer::Yes, Answer::No}) {
            cells.push_back({reader, cancelled, status, exists, answer});
          }
        }
      }
    }
  }
  return cells;
}

std::string Describe(const Cell& cell) {
  return std::string(cell.reader.name) + " Cancelled " + cell.cancelled.value_or("missing") +
         " Status " + cell.status.value_or("missing") + (cell.recordExists ? " exists" : " new") +
         (cell.answer == Answer::Yes ? " Yes" : " No");
}

TEST_F(ResultReaders, EveryCombinationOfResultFieldsHasItsEffect) {
  int cells = 0;
  for (const Cell& cell : EveryCell()) {
    SCOPED_TRACE(Describe(cell));
    database = fakes::Database();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    AnswerJournal(cell.reader.updateQuery);
    if (cell.recordExists) {
      AnswerLink(cell.reader.existsQuery);
      AnswerLink(cell.reader.deleteQuery);
      AnswerLink(u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-LINK'");
    }
    dialogs = fakes::Dialogs();
    dialogs.answers = {cell.answer};
    updateJournals = 0;
    Put(cell.reader.file, ResultText(cell.cancelled, cell.status, cell.reader.userDefData));

    Read(cell.reader.kind);

    const Expected expected = ExpectedOf(cell);
    EXPECT_EQ(Changes(), expected.changes);
    EXPECT_EQ(dialogs.shown.size(), expected.asks ? 1U : 0U);
    EXPECT_EQ(updateJournals, expected.updateJournals);
    EXPECT_EQ(Exists(cell.reader.file), !expected.fileDeleted);
    EXPECT_EQ(database.AliveConnections(), 0);
    EXPECT_FALSE(database.InTransaction());
    ++cells;
  }
  EXPECT_EQ(cells, static_cast<int>(kReaders.size()) * 8 * 7 * 2 * 2);
}

TEST_F(ResultReaders, DeletedCaseAsksTheHostsExactQuestion) {
  AnswerLink(u"SELECT * FROM Vilnor WHERE VilnorId = 4711");
  Put(u"OutExistCase4711.xml", ResultText("3", std::nullopt, ""));
  Read(RequestKind::ExistCase);
  EXPECT_EQ(dialogs.shown,
            (std::vector<platform::MessageBox>{
                {.text = u"Ärendet är borttaget i Vilnor Link\r\n\r\nTa bort kopplingen till "
                         u"ärendet i Kestra?",
                 .title = u"Kestra Dental koppling till Vilnor Link",
                 .icon = platform::Icon::Question,
                 .buttons = platform::Buttons::YesNo}}));
}

TEST_F(ResultReaders, DeletedCaseIsTakenFromTheLinkRecordNotTheFile) {
  AnswerLink(u"SELECT * FROM Vilnor WHERE VilnorId = 4711");
  AnswerLink(u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-LINK'");
  dialogs.answers = {Answer::Yes};
  Put(u"OutExistCase4711.xml", ResultText("3", "1", ""));
  Read(RequestKind::ExistCase);
  EXPECT_EQ(Changes(), Deletion(true));
}

TEST_F(ResultReaders, UnreadableFileIsKeptSilently) {
  for (const auto& reader : kReaders) {
    for (const char* contents : {"", "<Envelope>", "no xml", "<a/><b/>", "<a>\xFF</b>",
                                 "<?xml version='1.0' encoding='UTF-8'?><a>\xE5</a>"}) {
      SCOPED_TRACE(std::string(reader.name) + " " + contents);
      Put(reader.file, contents);
      Read(reader.kind);
      EXPECT_TRUE(Exists(reader.file));
      EXPECT_TRUE(dialogs.shown.empty());
      EXPECT_EQ(updateJournals, 0);
      EXPECT_EQ(Changes(), Statements());
    }
    std::filesystem::remove(folder / "Vilnor" / ToUtf8(reader.file));
    Read(reader.kind);
    EXPECT_TRUE(dialogs.shown.empty());
  }
}

// Each load gives the next of `errors`.
class ScriptedDocuments : public platform::ResultDocuments {
 public:
  class Document : public platform::ResultDocument {
   public:
    explicit Document(platform::ParseError error) : error_(std::move(error)) {}
    void Load(const std::u16string& /*path*/) override {}
    platform::ParseError GetParseError() override { return error_; }
    automation::Value FirstValue(const std::u16string& /*tagName*/) override {
      throw automation::AutomationError(automation::RuntimeError::ObjectNotSet);
    }

   private:
    platform::ParseError error_;
  };
  std::unique_ptr<platform::ResultDocument> New() override {
    auto error = errors.front();
    errors.pop_front();
    return std::make_unique<Document>(error);
  }
  std::deque<platform::ParseError> errors;
};

TEST_F(ResultReaders, FileDamagedBeforeTheSecondLoadIsReported) {
  ScriptedDocuments scripted;
  platform::Platform changed = fakes::With(ports, scripted);
  platform::Use(changed);
  for (const auto& reader : {kReaders[0], kReaders[1]}) {
    scripted.errors = {{},
                       {.code = -1072896682, .filePosition = 17, .reason = u"Ogiltigt tecken."}};
    dialogs.shown.clear();
    Put(reader.file, ResultText("0", "5", reader.userDefData));
    Read(reader.kind);
    EXPECT_EQ(dialogs.shown,
              (std::vector<platform::MessageBox>{
                  {.text = u"XMLDOM Error -1072896682\r\nPos 17Reason Ogiltigt tecken.",
                   .title = u"",
                   .icon = platform::Icon::None,
                   .buttons = platform::Buttons::Ok}}));
    EXPECT_TRUE(Exists(reader.file));
    EXPECT_EQ(updateJournals, 0);
  }
  platform::Use(ports);
}

struct BadResult {
  const char* cancelled;
  const char* status;
  const char* userDefData;
  const char16_t* text;
};

TEST_F(ResultReaders, InvalidNumbersAreReportedWithTheXmlName) {
  const auto results = std::to_array<BadResult>(
      {{"x", "5", "1&amp;2&amp;3", u"13 Type mismatch in XMLReadNewCase"},
       {"", "5", "1&amp;2&amp;3", u"13 Type mismatch in XMLReadNewCase"},
       {"0", "fem", "1&amp;2&amp;3", u"13 Type mismatch in XMLReadNewCase"},
       {"0", "99999999999", "1&amp;2&amp;3", u"6 Overflow in XMLReadNewCase"},
       {"0", "5", "1&amp;två&amp;3", u"13 Type mismatch in XMLReadNewCase"},
       {"0", "5", "1&amp;&amp;3", u"13 Type mismatch in XMLReadNewCase"},
       {"0", "5", "1&amp;2&amp;", u"13 Type mismatch in XMLReadNewCase"},
       {"0", "5", "1&amp;2&amp;3&amp;4", u"13 Type mismatch in XMLReadNewCase"},
       {"0", "5", "1&amp;2147483648&amp;3", u"6 Overflow in XMLReadNewCase"},
       {"0", "5", "1&amp;2", u"5 Invalid procedure call or argument in XMLReadNewCase"},
       {"0", "5", "4711", u"5 Invalid procedure call or argument in XMLReadNewCase"},
       {"0", "5", "", u"5 Invalid procedure call or argument in XMLReadNewCase"}});
  for (const auto& result : results) {
    SCOPED_TRACE(ToUtf8(result.text) + " " + result.userDefData);
    dialogs.shown.clear();
    std::string latin1 = ResultText(result.cancelled, result.status, result.userDefData);
    if (const auto at = latin1.find("två"); at != std::string::npos) {
      latin1.replace(at, std::string("två").size(), "tv\xE5");
    }
    Put(u"OutNewCase4711.xml", latin1);
    Read(RequestKind::NewCase);
    EXPECT_EQ(dialogs.shown,
              (std::vector<platform::MessageBox>{{.text = result.text,
                                                  .title = u"Vilnor Link connection",
                                                  .icon = platform::Icon::Exclamation}}));
    EXPECT_TRUE(Exists(u"OutNewCase4711.xml"));
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(updateJournals, 0);
  }
}

TEST_F(ResultReaders, FirstElementOfAResultCountsWhereverItStands) {
  database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
  Put(u"OutNewCase4711.xml",
      "<a><b><Status>5</Status><c><Id>L-9</Id></c></b><Status>7</Status><Id>L-10</Id>"
      "<UserName><![CDATA[k\xC3\xA5re]]></UserName><UserDefData>1&#38;12&amp;3</UserDefData></a>");
  Read(RequestKind::NewCase);
  EXPECT_EQ(Changes(), Insertion(false));
  EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
}

TEST_F(ResultReaders, ResultWithADocumentTypeIsKeptSilently) {
  std::ofstream(folder / "secret.txt") << "5";
  Put(u"OutNewCase4711.xml", "<!DOCTYPE a [<!ENTITY e SYSTEM \"" +
                                 (folder / "secret.txt").string() +
                                 "\">]><a><Status>&e;</Status><UserDefData>1&amp;2&amp;3"
                                 "</UserDefData></a>");
  Read(RequestKind::NewCase);
  EXPECT_EQ(Changes(), Statements());
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_TRUE(Exists(u"OutNewCase4711.xml"));
}

TEST_F(ResultReaders, UnopenableDatabaseIsReportedAndTheResultStays) {
  for (const auto& reader : {kReaders[0], kReaders[1]}) {
    database = fakes::Database();
    database.FailCall(2, kServerGone);
    dialogs.shown.clear();
    Put(reader.file, ResultText("0", "5", reader.userDefData));
    Read(reader.kind);
    EXPECT_EQ(dialogs.Texts(), Statements{u"-2147467259 server closed the connection in " +
                                          automation::FromUtf8(reader.name)});
    EXPECT_TRUE(Exists(reader.file));
    EXPECT_EQ(updateJournals, 0);
    EXPECT_EQ(database.AliveConnections(), 0);
  }
}

TEST_F(ResultReaders, ExistingCasesDatabaseIsOpenedInTheXmlRegion) {
  database.installed = false;
  Put(u"OutExistCase4711.xml", ResultText("99", "7", ""));
  Read(RequestKind::ExistCase);
  EXPECT_EQ(dialogs.Texts(),
            Statements{u"429 ActiveX component can't create object in XMLReadExistCase"});
  EXPECT_TRUE(Exists(u"OutExistCase4711.xml"));
}

// The real parser. Counts its living documents, and runs an action before the n-th is created.
class WatchedDocuments : public platform::ResultDocuments {
 public:
  class Document : public platform::ResultDocument {
   public:
    Document(std::unique_ptr<platform::ResultDocument> real, WatchedDocuments& all)
        : real_(std::move(real)), all_(all) {
      ++all_.alive;
    }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document() override { --all_.alive; }
    void Load(const std::u16string& path) override { real_->Load(path); }
    platform::ParseError GetParseError() override { return real_->GetParseError(); }
    automation::Value FirstValue(const std::u16string& tagName) override {
      all_.read.push_back(tagName);
      return real_->FirstValue(tagName);
    }

   private:
    std::unique_ptr<platform::ResultDocument> real_;
    WatchedDocuments& all_;
  };
  std::unique_ptr<platform::ResultDocument> New() override {
    beforeDocument(++made);
    return std::make_unique<Document>(real_.New(), *this);
  }
  int made = 0;
  int alive = 0;
  std::vector<std::u16string> read;
  std::function<void(int)> beforeDocument = [](int) {};

 private:
  native::XmlDocuments real_;
};

// The folder, with an action before a file is deleted.
class WatchedFiles : public native::LocalFiles {
 public:
  void DeleteFile(const std::u16string& path) override {
    beforeDeletion();
    native::LocalFiles::DeleteFile(path);
  }
  std::function<void()> beforeDeletion = [] {};
};

class WatchedResultReaders : public ResultReaders {
 protected:
  WatchedResultReaders() { platform::Use(watched_); }
  ~WatchedResultReaders() override { platform::Use(ports); }

  WatchedDocuments watchedDocuments;
  WatchedFiles watchedFiles;

 private:
  platform::Platform watched_ = fakes::With(ports, watchedFiles, watchedDocuments);
};

TEST_F(WatchedResultReaders, DocumentAndDatabaseAreReleasedBeforeTheResultIsDeleted) {
  int deletions = 0;
  watchedFiles.beforeDeletion = [&] {
    ++deletions;
    EXPECT_EQ(watchedDocuments.alive, 0);
    EXPECT_EQ(database.AliveConnections(), 0);
  };
  int expected = 0;
  for (const auto& cell : EveryCell()) {
    SCOPED_TRACE(Describe(cell));
    database = fakes::Database();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    AnswerJournal(cell.reader.updateQuery);
    dialogs = fakes::Dialogs();
    dialogs.answers = {cell.answer};
    Put(cell.reader.file, ResultText(cell.cancelled, cell.status, cell.reader.userDefData));
    Read(cell.reader.kind);
    expected += ExpectedOf(cell).fileDeleted ? 1 : 0;
    EXPECT_EQ(deletions, expected);
  }
}

// The message may come before the link program has closed the file.
TEST_F(WatchedResultReaders, ResultStillBeingWrittenAtItsMessageIsReadAndDeleted) {
  for (const auto& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    database = fakes::Database();
    AnswerJournal(reader.updateQuery);
    watchedDocuments.made = 0;
    watchedDocuments.beforeDocument = [&](int number) {
      if (number == 1) {
        Put(reader.file, ResultText("99", "1", reader.userDefData));
      }
    };
    Put(reader.file, "<Envelope>");
    Read(reader.kind);
    EXPECT_EQ(Changes().size(), 2U);
    EXPECT_FALSE(Exists(reader.file));
  }
}

TEST_F(WatchedResultReaders, ResultIsEnteredThenAnnouncedThenReleasedThenDeleted) {
  for (const auto& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    database = fakes::Database();
    AnswerJournal(reader.updateQuery);
    Put(reader.file, ResultText("99", "1", reader.userDefData));
    std::vector<std::string> steps;
    atUpdateJournal = [&] {
      steps.emplace_back("told");
      EXPECT_EQ(Changes().size(), 2U) << "the rows are written";
      EXPECT_EQ(database.AliveConnections(), 1) << "the database object is still there";
      EXPECT_FALSE(database.InTransaction());
    };
    watchedFiles.beforeDeletion = [&] {
      steps.emplace_back("deleted");
      EXPECT_EQ(database.AliveConnections(), 0);
    };
    Read(reader.kind);
    EXPECT_EQ(steps, (std::vector<std::string>{"told", "deleted"}));
  }
}

// Each read can fail; everything after it is then skipped.
TEST_F(WatchedResultReaders, ResultElementsAreReadInTheirOrder) {
  for (const auto& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    watchedDocuments.read.clear();
    Put(reader.file, ResultText("99", "0", reader.userDefData));
    Read(reader.kind);
    EXPECT_EQ(watchedDocuments.read,
              reader.kind == RequestKind::ExistCase
                  ? (Statements{u"Cancelled", u"Status", u"Id", u"UserName", u"UserDefData"})
                  : (Statements{u"Cancelled", u"Status", u"UserDefData", u"Id", u"UserName"}));
  }
}

TEST_F(WatchedResultReaders, FileRemovedBetweenTheLoadsIsReported) {
  for (const auto& reader : {kReaders[0], kReaders[1]}) {
    dialogs.shown.clear();
    watchedDocuments.made = 0;
    watchedDocuments.beforeDocument = [&](int number) {
      if (number == 2) {
        std::filesystem::remove(folder / "Vilnor" / ToUtf8(reader.file));
      }
    };
    Put(reader.file, ResultText("0", "5", reader.userDefData));
    Read(reader.kind);
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.shown[0].text.starts_with(u"XMLDOM Error -"));
    EXPECT_NE(dialogs.shown[0].text.find(u"\r\nPos 0Reason "), std::u16string::npos);
    EXPECT_EQ(dialogs.shown[0].title, u"");
    EXPECT_EQ(dialogs.shown[0].icon, platform::Icon::None);
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(updateJournals, 0);
  }
}

TEST_F(WatchedResultReaders, FileRemovedBeforeItsDeletionIsReportedAfterItsRowsAreWritten) {
  database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
  watchedFiles.beforeDeletion = [&] {
    std::filesystem::remove(folder / "Vilnor" / "OutNewCase4711.xml");
  };
  Put(u"OutNewCase4711.xml", ResultText("0", "5", "1&amp;12&amp;3"));
  Read(RequestKind::NewCase);
  EXPECT_EQ(Changes(), Insertion(false));
  EXPECT_EQ(updateJournals, 1);
  EXPECT_EQ(dialogs.Texts(), Statements{u"53 File not found in ReadNewCase"});
}

TEST_F(ResultReaders, EveryStatusHasItsUserDefDataSplit) {
  for (const auto& reader : {kReaders[0], kReaders[1]}) {
    for (const char* status : {"0", "1", "3", "5", "7", "8"}) {
      SCOPED_TRACE(std::string(reader.name) + " " + status);
      dialogs.shown.clear();
      Put(reader.file, ResultText("0", status, "1&amp;x&amp;3&amp;4&amp;5"));
      Read(reader.kind);
      EXPECT_EQ(dialogs.Texts(),
                Statements{u"13 Type mismatch in XML" + automation::FromUtf8(reader.name)});
      EXPECT_TRUE(Exists(reader.file));
      EXPECT_TRUE(database.Log().empty());
    }
  }
}

TEST_F(ResultReaders, MeaninglessStatusOpensNoDatabase) {
  for (const auto& reader : kReaders) {
    Put(reader.file, ResultText("99", "3", reader.userDefData));
    database.ClearLog();
    Read(reader.kind);
    EXPECT_EQ(database.LogOf(u"Connection.Open").size(),
              reader.kind == RequestKind::ExistCase ? 1U : 0U)
        << "only an opened case looks its link up";
  }
}

// Any program on the desktop can post a message.
TEST_F(ResultReaders, MessageWithoutAFileChangesNothing) {
  for (const auto& reader : kReaders) {
    database.ClearLog();
    Read(reader.kind);
    EXPECT_EQ(Changes(), Statements());
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(updateJournals, 0);
    EXPECT_EQ(database.Log().empty(), reader.kind != RequestKind::ExistCase)
        << "the link is looked up";
    EXPECT_EQ(database.AliveConnections(), 0);
  }
}

TEST_F(ResultReaders, WithdrawnExistingCaseWithoutAnIdIsTakenFromTheLinkRecord) {
  AnswerLink(u"SELECT * FROM Vilnor WHERE VilnorId = 4711");
  AnswerLink(u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-LINK'");
  Put(u"OutExistCase4711.xml", "<a><Status>7</Status></a>");
  Read(RequestKind::ExistCase);
  EXPECT_EQ(Changes(), Deletion(true));
  EXPECT_EQ(updateJournals, 1);
  EXPECT_FALSE(Exists(u"OutExistCase4711.xml"));
}

TEST_F(ResultReaders, StatusNotNeededForTheOutcomeIsNotRead) {
  AnswerLink(u"SELECT * FROM Vilnor WHERE VilnorId = 4711");
  AnswerLink(u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-LINK'");
  Put(u"OutExistCase4711.xml", ResultText("0", "x", ""));
  Read(RequestKind::ExistCase);
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_FALSE(Exists(u"OutExistCase4711.xml"));
  EXPECT_EQ(Changes(), Statements());

  dialogs.answers = {Answer::Yes};
  Put(u"OutExistCase4711.xml", ResultText("3", "x", ""));
  Read(RequestKind::ExistCase);
  EXPECT_EQ(dialogs.shown.size(), 1U);
  EXPECT_FALSE(Exists(u"OutExistCase4711.xml"));
  EXPECT_EQ(Changes(), Deletion(true));
}

TEST_F(ResultReaders, ExistingCasesNumbersAreWholeAndInTheUsersFormat) {
  struct Result {
    const char* cancelled;
    const char* status;
    Statements boxes;
  };
  locale.UseSwedish();
  const auto results =
      std::to_array<Result>({{"x", "7", {u"13 Type mismatch in XMLReadExistCase"}},
                             {"99", "x", {u"13 Type mismatch in XMLReadExistCase"}},
                             {"99999999999", "7", {u"6 Overflow in XMLReadExistCase"}},
                             {"2,4", "7", {}}});
  for (const auto& result : results) {
    SCOPED_TRACE(std::string(result.cancelled) + " " + result.status);
    dialogs.shown.clear();
    Put(u"OutExistCase4711.xml", ResultText(result.cancelled, result.status, ""));
    Read(RequestKind::ExistCase);
    EXPECT_EQ(dialogs.Texts(), result.boxes);
    EXPECT_EQ(Exists(u"OutExistCase4711.xml"), !result.boxes.empty());
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(updateJournals, 0);
  }
}

TEST_F(ResultReaders, NewCaseIsCancelledByTheNumberOneOnly) {
  locale.UseSwedish();
  for (const char* cancelled : {"99999999999", "1,4", "0,9"}) {
    SCOPED_TRACE(cancelled);
    database = fakes::Database();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    Put(u"OutNewCase4711.xml", ResultText(cancelled, "5", "1&amp;12&amp;3"));
    Read(RequestKind::NewCase);
    EXPECT_EQ(Changes(), Insertion(false));
    EXPECT_TRUE(dialogs.shown.empty());
  }
  database = fakes::Database();
  Put(u"OutNewCase4711.xml", ResultText("1,0", "5", "1&amp;12&amp;3"));
  Read(RequestKind::NewCase);
  EXPECT_EQ(Changes(), Statements());
  EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
}

TEST_F(ResultReaders, ApplicationsTextIsSplitAtItsFirstFourSeparators) {
  const auto results = std::to_array<std::pair<const char*, const char16_t*>>(
      {{"x&amp;12&amp;3&amp;8&amp;A1", u"13 Type mismatch in XMLReadNewFHP"},
       {"55&amp;x&amp;3&amp;8&amp;A1", u"13 Type mismatch in XMLReadNewFHP"},
       {"55&amp;12&amp;x&amp;8&amp;A1", u"13 Type mismatch in XMLReadNewFHP"},
       {"55&amp;12&amp;3", u"5 Invalid procedure call or argument in XMLReadNewFHP"},
       {"55&amp;12", u"5 Invalid procedure call or argument in XMLReadNewFHP"},
       {"", u"5 Invalid procedure call or argument in XMLReadNewFHP"}});
  for (const auto& [userDefData, text] : results) {
    SCOPED_TRACE(userDefData);
    dialogs.shown.clear();
    Put(u"OutNewFHP4711.xml", ResultText("0", "5", userDefData));
    Read(RequestKind::NewFHP);
    EXPECT_EQ(dialogs.Texts(), Statements{text});
    EXPECT_TRUE(Exists(u"OutNewFHP4711.xml"));
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(updateJournals, 0);
  }
  dialogs.shown.clear();
  database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
  Put(u"OutNewFHP4711.xml", ResultText("0", "5", "55&amp;12&amp;3&amp;8"));
  Read(RequestKind::NewFHP);
  EXPECT_TRUE(dialogs.shown.empty());
  ASSERT_EQ(Changes().size(), 3U);
  EXPECT_NE(Changes()[1].find(u"ärendenr: 55&12&3&8 överförd"), std::u16string::npos);
}

TEST_F(ResultReaders, DatabaseThatCannotBeReopenedIsReportedUnderReadExistCase) {
  Put(u"OutExistCase4711.xml", ResultText("99", "7", ""));
  Read(RequestKind::ExistCase);
  const auto& log = database.Log();
  const auto isOpening = [](const auto& call) { return call.starts_with(u"Connection.Open"); };
  const auto first = std::find_if(log.begin(), log.end(), isOpening);
  const auto second = std::find_if(std::next(first), log.end(), isOpening);
  ASSERT_NE(second, log.end());

  database.FailCall(static_cast<std::size_t>(second - log.begin()) + 1, kServerGone);
  updateJournals = 0;
  Put(u"OutExistCase4711.xml", ResultText("99", "7", ""));
  Read(RequestKind::ExistCase);
  EXPECT_EQ(dialogs.Texts(), Statements{u"-2147467259 server closed the connection in "
                                        u"ReadExistCase"});
  EXPECT_TRUE(Exists(u"OutExistCase4711.xml"));
  EXPECT_EQ(updateJournals, 0);
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(ResultReaders, EndlessValueIsReportedWithTheXmlName) {
  Put(u"OutNewCase4711.xml", "<a><Status>5</Status><UserDefData>1&amp;2&amp;3</UserDefData><Id>" +
                                 std::string(parser_limits::kLongestValue + 1, 'x') + "</Id></a>");
  Read(RequestKind::NewCase);
  EXPECT_EQ(Changes(), Statements());
  EXPECT_EQ(dialogs.Texts(), Statements{u"7 Out of memory in XMLReadNewCase"});
  EXPECT_TRUE(Exists(u"OutNewCase4711.xml"));
}

TEST_F(ResultReaders, FileOfFiftyMegabytesIsReadOrRefused) {
  constexpr std::size_t kSize = 50'000'000;
  const std::string line = "<b>" + std::string(10'000, 'x') + "</b>";
  std::string lines;
  while (lines.size() < kSize) {
    lines += line;
  }
  const std::string oneText =
      "<a><Status>3</Status><Note>" + std::string(kSize, 'x') + "</Note></a>";
  const std::string manyLines = "<a><Status>3</Status><Id>L-9</Id>" + lines + "</a>";
  for (const auto& contents : {oneText, manyLines}) {
    Put(u"OutExistCase4711.xml", contents);
    Read(RequestKind::ExistCase);
    EXPECT_TRUE(Exists(u"OutExistCase4711.xml"));
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(updateJournals, 0);
  }
}

TEST_F(ResultReaders, ResultIsEnteredWithoutAnEventSink) {
  database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
  Put(u"OutNewCase4711.xml", ResultText("0", "5", "99&amp;12&amp;3"));
  ReadResult(
      {.kind = RequestKind::NewCase, .key = 4711, .folder = exchangeDirectory, .events = nullptr});
  EXPECT_EQ(Changes(), Insertion(false));
  EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
}

}  // namespace
}  // namespace exchange
