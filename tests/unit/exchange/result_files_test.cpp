// What happens to a result file: deleted when it has been processed, set aside when a later reading
// could enter it.
#include "exchange/result_files.h"

#include "unit/exchange/result_fixture.h"

namespace exchange {
namespace {

using automation::RuntimeError;
using Names = std::vector<std::string>;

constexpr const char* kAside = "OutNewCase4711 2026-11-16 14.05.00.xml";

// The name of a file that a reader set aside.
std::string AsideOf(const Reader& reader) {
  std::string name = ToUtf8(reader.file);
  return name.insert(name.size() - 4, " 2026-11-16 14.05.00");
}

// The name of a file that could not be deleted.
std::string DoneOf(const Reader& reader) {
  return "Done" + AsideOf(reader).substr(3);
}

class ResultFiles : public ResultReaders {};

TEST_F(ResultFiles, ResultSetAsideIsNamedWithDateAndTime) {
  Put(u"OutNewCase4711.xml", "answer");
  SetAside(ExchangePath(u"OutNewCase4711.xml"));
  EXPECT_EQ(Files(), Names{kAside});
  EXPECT_EQ(Contents(automation::FromUtf8(kAside)), "answer");
}

TEST_F(ResultFiles, ResultsSetAsideInOneSecondAreNumbered) {
  for (const char* answer : {"first", "second", "third"}) {
    Put(u"OutNewCase4711.xml", answer);
    SetAside(ExchangePath(u"OutNewCase4711.xml"));
  }
  EXPECT_EQ(Files(), (Names{"OutNewCase4711 2026-11-16 14.05.00 2.xml",
                            "OutNewCase4711 2026-11-16 14.05.00 3.xml", kAside}));
  EXPECT_EQ(Contents(u"OutNewCase4711 2026-11-16 14.05.00 3.xml"), "third");
}

TEST_F(ResultFiles, MissingResultIsNotSetAside) {
  std::filesystem::create_directories(folder / "Vilnor");
  SetAside(ExchangePath(u"OutNewCase4711.xml"));
  SetAside(ExchangePath(u"none\\OutNewCase4711.xml"));
  EXPECT_EQ(Files(), Names());
}

// The folder, in which deleting or renaming files can be made to fail.
class HeldFiles : public native::LocalFiles {
 public:
  void DeleteFile(const std::u16string& path) override {
    Refuse(deletion);
    native::LocalFiles::DeleteFile(path);
  }
  void RenameFile(const std::u16string& path, const std::u16string& newPath) override {
    ++renamings;
    Refuse(renaming);
    native::LocalFiles::RenameFile(path, newPath);
  }
  std::optional<automation::RuntimeError> deletion;
  std::optional<automation::RuntimeError> renaming;
  int renamings = 0;

 private:
  static void Refuse(const std::optional<automation::RuntimeError>& error) {
    if (error) {
      throw automation::AutomationError(*error);
    }
  }
};

class HeldResultFiles : public ResultFiles {
 protected:
  HeldResultFiles() { platform::Use(held_); }
  ~HeldResultFiles() override { platform::Use(ports); }
  HeldFiles heldFiles;

 private:
  platform::Platform held_ = fakes::With(ports, heldFiles);
};

TEST_F(HeldResultFiles, UndeletableResultIsReportedWithTheErrorOfItsFile) {
  using enum RuntimeError;
  for (const auto error : {BadFileName, FileNotFound, DeviceIoError, FileAlreadyExists, DiskFull,
                           DeviceUnavailable, PermissionDenied, PathFileAccess, PathNotFound}) {
    const automation::AutomationError expected(error);
    heldFiles.deletion = error;
    dialogs.shown.clear();
    Put(u"OutNewCase4711.xml", ResultText("0", "7", "99&amp;12&amp;3"));
    Read(RequestKind::NewCase);
    EXPECT_EQ(dialogs.Texts(), Statements{automation::Decimal10(expected.number()) + u" " +
                                          expected.description() + u" in ReadNewCase"});
  }
}

TEST_F(HeldResultFiles, UndeletableResultIsRenamedAndReported) {
  heldFiles.deletion = RuntimeError::PermissionDenied;
  for (const auto& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    database = fakes::Database();
    AnswerJournal(reader.updateQuery);
    const std::u16string name = automation::FromUtf8(reader.name);
    dialogs.shown.clear();
    updateJournals = 0;
    Put(reader.file, ResultText("99", "1", reader.userDefData));
    Read(reader.kind);
    EXPECT_EQ(dialogs.Texts(), Statements{u"70 Permission denied in " + name});
    EXPECT_EQ(updateJournals, 1);
    EXPECT_EQ(Changes().size(), 2U);
    EXPECT_EQ(database.AliveConnections(), 0);
    EXPECT_EQ(Files(), Names{DoneOf(reader)});

    dialogs.shown.clear();
    Put(reader.file, ResultText("1", "1", reader.userDefData));
    Read(reader.kind);
    EXPECT_EQ(dialogs.Texts(), Statements{u"70 Permission denied in XML" + name});
    EXPECT_EQ(updateJournals, 1);
    EXPECT_FALSE(Exists(reader.file));
    std::filesystem::remove_all(folder / "Vilnor");
  }
}

TEST_F(HeldResultFiles, UndeletableAndUnrenamableResultStaysAndIsReported) {
  heldFiles.deletion = RuntimeError::PermissionDenied;
  heldFiles.renaming = RuntimeError::PathFileAccess;
  for (const auto& reader : kReaders) {
    dialogs.shown.clear();
    Put(reader.file, ResultText("1", "1", reader.userDefData));
    Read(reader.kind);
    EXPECT_EQ(dialogs.Texts(),
              Statements{u"70 Permission denied in XML" + automation::FromUtf8(reader.name)});
    EXPECT_TRUE(Exists(reader.file));
  }
}

// The system reports too long a new name as a missing file. A folder in which every name is in use
// is not normal.
TEST_F(HeldResultFiles, FailedAndUnrenamableResultStaysWithASecondBox) {
  struct Refusal {
    RuntimeError error;
    const char16_t* box;
    int renamings;
  };
  for (const auto& refusal :
       {Refusal{RuntimeError::PermissionDenied, u"70 Permission denied in ReadNewCase", 1},
        Refusal{RuntimeError::FileNotFound, u"53 File not found in ReadNewCase", 1},
        Refusal{RuntimeError::FileAlreadyExists, u"58 File already exists in ReadNewCase", 1000}}) {
    dialogs.shown.clear();
    updateJournals = 0;
    heldFiles.renamings = 0;
    heldFiles.renaming = refusal.error;
    database.FailStatement(u"Insert into Vilnor", kServerGone);
    Put(u"OutNewCase4711.xml", ResultText("0", "5", "1&amp;12&amp;3"));
    Read(RequestKind::NewCase);
    EXPECT_EQ(dialogs.Texts(),
              (Statements{u"-2147467259 server closed the connection in AddNewCase", refusal.box}));
    EXPECT_EQ(updateJournals, 1);
    EXPECT_EQ(heldFiles.renamings, refusal.renamings);
    EXPECT_EQ(Files(), Names{"OutNewCase4711.xml"});
  }
}

// The statuses that a reader acts on, each with the beginnings of its statements.
struct Acting {
  const char* status;
  std::vector<const char16_t*> statements;
};

std::vector<Acting> ActingOf(const Reader& reader) {
  const Acting changed = {
      "1", {u"SELECT Journal_ID", u"SELECT Tekst", u"Update Vilnor", u"Update Journal"}};
  const std::vector<const char16_t*> deletion = {u"SELECT VilnorID", u"Delete from Journal",
                                                 u"Delete from Vilnor"};
  if (reader.kind == RequestKind::ExistCase) {
    return {changed, {"7", deletion}};
  }
  return {changed,
          {"5",
           {u"Insert into Vilnor", u"Select @@Identity", u"INSERT INTO Journal", u"UPDATE Vilnor"}},
          {"7", deletion}};
}

class FailedResults : public ResultReaders {
 protected:
  // A database in which `status` can be entered.
  void Script(const Reader& reader, const std::string& status) {
    database = fakes::Database();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    AnswerJournal(reader.updateQuery);
    if (status != "5") {
      AnswerLink(reader.existsQuery);
    }
    AnswerLink(reader.deleteQuery);
    dialogs.shown.clear();
    updateJournals = 0;
    std::filesystem::remove_all(folder / "Vilnor");
    Put(reader.file, ResultText("99", status, reader.userDefData));
  }
};

TEST_F(FailedResults, FailedResultIsSetAsideAndEnteredOnceTheDatabaseIsBack) {
  for (const auto& reader : kReaders) {
    for (const auto& acting : ActingOf(reader)) {
      for (const auto* statement : acting.statements) {
        SCOPED_TRACE(std::string(reader.name) + " " + acting.status + " " + ToUtf8(statement));
        Script(reader, acting.status);
        const std::string result = Contents(reader.file);
        database.FailStatement(statement, kServerGone);
        Read(reader.kind);
        EXPECT_EQ(dialogs.Texts().front().substr(0, 11), u"-2147467259");
        EXPECT_EQ(updateJournals, 1);
        EXPECT_FALSE(database.InTransaction());
        EXPECT_EQ(Files(), Names{AsideOf(reader)});
        EXPECT_EQ(Contents(automation::FromUtf8(AsideOf(reader))), result);

        Script(reader, acting.status);
        Read(reader.kind);
        EXPECT_TRUE(dialogs.shown.empty());
        EXPECT_EQ(Files(), Names());
      }
    }
  }
}

TEST_F(FailedResults, ResultThatNoReadingCouldEnterIsReportedAndDeleted) {
  for (const auto& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    const std::u16string procedure =
        reader.kind == RequestKind::ExistCase ? u"UpdateCaseById" : u"UpdateCase";
    Script(reader, "1");
    database.Answer(u"SELECT Tekst from Journal Where ID = 900",
                    {{u"Tekst"}, {{u"Ärende upprättat i Vilnor Link ref.nr 2071"}}});
    Read(reader.kind);
    EXPECT_EQ(dialogs.Texts(), Statements{u"5 Invalid procedure call or argument in " + procedure});
    EXPECT_EQ(updateJournals, 1);
    EXPECT_EQ(Files(), Names());

    Script(reader, "1");
    database.Answer(reader.updateQuery, {{u"Journal_ID"}, {}});
    Read(reader.kind);
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(dialogs.Texts().front().substr(0, 4), u"3021");
    EXPECT_EQ(updateJournals, 1);
    EXPECT_EQ(Files(), Names());
  }
}

// An error number that is final elsewhere means nothing when a provider raises it.
TEST_F(FailedResults, FailedResultIsSetAsideWhateverTheErrorNumber) {
  for (const auto& reader : kReaders) {
    for (const auto& acting : ActingOf(reader)) {
      for (const auto* statement : acting.statements) {
        for (const std::int32_t number : {5, 3021, 94, 13, 3709}) {
          SCOPED_TRACE(std::string(reader.name) + " " + ToUtf8(statement) + " " +
                       std::to_string(number));
          Script(reader, acting.status);
          database.FailStatement(statement, {number, u"", u"text"});
          Read(reader.kind);
          EXPECT_EQ(Files(), Names{AsideOf(reader)});
        }
      }
    }
  }
}

TEST_F(FailedResults, ResultWhoseExistenceTestFailsIsSetAside) {
  for (const auto& reader : {kReaders[0], kReaders[1]}) {
    for (const std::int32_t number : {5, 3021}) {
      Script(reader, "7");
      database.FailStatement(u"SELECT * FROM Vilnor WHERE", {number, u"", u"text"});
      Read(reader.kind);
      EXPECT_EQ(Files(), Names{AsideOf(reader)});
    }
  }
}

TEST_F(FailedResults, ResultOfALinkWithoutAJournalKeyIsSetAside) {
  for (const auto& reader : kReaders) {
    Script(reader, "1");
    database.Answer(reader.updateQuery, {{u"Journal_ID"}, {{automation::Null()}}});
    Read(reader.kind);
    EXPECT_EQ(dialogs.Texts().front().substr(0, 3), u"94 ");
    EXPECT_EQ(Files(), Names{AsideOf(reader)});
  }
}

TEST_F(FailedResults, ResultOfALinkWhoseJournalLineIsGoneIsSetAside) {
  for (const auto& reader : kReaders) {
    Script(reader, "1");
    database.Answer(u"SELECT Tekst from Journal Where ID = 900", {{u"Tekst"}, {}});
    Read(reader.kind);
    EXPECT_EQ(dialogs.Texts().front().substr(0, 4), u"3021");
    EXPECT_EQ(Files(), Names{AsideOf(reader)});
  }
}

TEST_F(FailedResults, SentCaseWhoseExistenceTestFailedIsAddedAndSetAside) {
  for (const auto& reader : {kReaders[0], kReaders[1]}) {
    SCOPED_TRACE(reader.name);
    Script(reader, "5");
    database.FailStatement(u"SELECT * FROM Vilnor WHERE", kServerGone);
    Read(reader.kind);
    EXPECT_EQ(Changes(), Insertion(reader.kind == RequestKind::NewFHP));
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(updateJournals, 1);
    EXPECT_EQ(Files(), Names{AsideOf(reader)});

    Script(reader, "7");
    database.FailStatement(u"SELECT * FROM Vilnor WHERE", kServerGone);
    Read(reader.kind);
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(updateJournals, 1);
    EXPECT_EQ(Files(), Names{AsideOf(reader)});
  }
}

TEST_F(FailedResults, LostDatabaseShowsTheBoxOfEachCall) {
  Script(kReaders[1], "5");
  database.FailStatement(u"SELECT * FROM Vilnor WHERE", kServerGone);
  database.FailStatement(u"Insert into Vilnor", kServerGone);
  Read(RequestKind::NewCase);
  EXPECT_EQ(dialogs.Texts(),
            (Statements{u"-2147467259 server closed the connection in CaseExistsPID",
                        u"-2147467259 server closed the connection in AddNewCase"}));
  EXPECT_EQ(Files(), Names{kAside});
}

TEST_F(FailedResults, ResultReadAgainAfterItWasEnteredAddsNothing) {
  Script(kReaders[1], "5");
  AnswerLink(kReaders[1].existsQuery);
  Read(RequestKind::NewCase);
  EXPECT_EQ(Changes(), Statements());
  EXPECT_EQ(Files(), Names());
}

class FailedLookup : public ResultReaders {
 protected:
  FailedLookup() {
    AnswerLink(u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-9'");
    AnswerJournal(u"SELECT Journal_ID from Vilnor Where VilnorID= 4711");
    database.FailStatement(u"SELECT * FROM Vilnor WHERE VilnorId", kServerGone);
    dialogs.answers = {Answer::Ok, Answer::Yes};
  }
  void ReadElements(const std::string& elements) {
    Put(u"OutExistCase4711.xml", "<a>" + elements + "</a>");
    Read(RequestKind::ExistCase);
    EXPECT_EQ(dialogs.Texts(),
              Statements{u"-2147467259 server closed the connection in GetCaseIdByVilnorId"});
    EXPECT_EQ(database.AliveConnections(), 0);
  }
  static inline const Names kSetAside = {"OutExistCase4711 2026-11-16 14.05.00.xml"};
};

TEST_F(FailedLookup, FailedLinkLookupOfADeletedCaseAsksNothingAndSetsTheResultAside) {
  ReadElements("<Cancelled>3</Cancelled><Status>7</Status><Id>L-9</Id>");
  EXPECT_EQ(Changes(), Statements());
  EXPECT_EQ(updateJournals, 0);
  EXPECT_EQ(Files(), kSetAside);
}

TEST_F(FailedLookup, FailedLinkLookupOfACancelledCaseDeletesTheResult) {
  ReadElements("<Cancelled>0</Cancelled><Status>7</Status>");
  EXPECT_EQ(Changes(), Statements());
  EXPECT_EQ(updateJournals, 0);
  EXPECT_EQ(Files(), Names());
}

TEST_F(FailedLookup, FailedLinkLookupOfAWithdrawnCaseDeletesTheCaseTheResultNames) {
  ReadElements("<Status>7</Status><Id>L-9</Id>");
  EXPECT_EQ(Changes(), Deletion(true));
  EXPECT_EQ(updateJournals, 1);
  EXPECT_EQ(Files(), Names());
}

TEST_F(FailedLookup, FailedLinkLookupOfAChangedCaseUpdatesItAndDeletesTheResult) {
  ReadElements("<Status>1</Status><Id>L-9</Id>");
  EXPECT_EQ(Changes(),
            (Statements{u"Update Vilnor SET CaseId = L-9, StatusCode = 1 Where VilnorId= 4711",
                        u"Update Journal SET Tekst = 'Ärende ref.nr L-9' Where ID = 900"}));
  EXPECT_EQ(updateJournals, 1);
  EXPECT_EQ(Files(), Names());
}

TEST_F(FailedLookup, FailedLinkLookupSetsAsideAWithdrawnCaseWithoutANumber) {
  for (const char* id : {"", "<Id/>", "<Id> </Id>"}) {
    SCOPED_TRACE(id);
    dialogs.shown.clear();
    std::filesystem::remove_all(folder / "Vilnor");
    ReadElements(std::string("<Status>7</Status>") + id);
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(updateJournals, 0);
    EXPECT_EQ(Files(), kSetAside);
  }
}

TEST_F(FailedLookup, FailedLinkLookupOfAChangedCaseWithoutANumberIsSetAside) {
  Put(u"OutExistCase4711.xml", "<a><Status>1</Status></a>");
  Read(RequestKind::ExistCase);
  EXPECT_EQ(dialogs.Texts(),
            (Statements{u"-2147467259 server closed the connection in GetCaseIdByVilnorId",
                        u"-2147217900 Syntax error in the statement. in UpdateCaseById"}));
  EXPECT_EQ(updateJournals, 1);
  EXPECT_EQ(Files(), kSetAside);
}

TEST_F(FailedLookup, FailedLinkLookupLeavesAResultWithoutMeaning) {
  ReadElements("<Status>3</Status>");
  EXPECT_EQ(Files(), Names{"OutExistCase4711.xml"});
}

// Vilnor Link may answer another request while a box or the host's handler delays the first.
TEST_F(ResultFiles, NewerResultOfTheSameNameIsKept) {
  for (const bool fails : {false, true}) {
    for (const auto& reader : kReaders) {
      SCOPED_TRACE(reader.name);
      database = fakes::Database();
      dialogs.shown.clear();
      AnswerJournal(reader.updateQuery);
      if (fails) {
        database.FailStatement(u"Update Vilnor", kServerGone);
      }
      std::filesystem::remove_all(folder / "Vilnor");
      Put(reader.file, ResultText("99", "1", reader.userDefData));
      atUpdateJournal = [&] { Put(reader.file, "a newer answer"); };
      Read(reader.kind);
      EXPECT_EQ(Files(), Names{ToUtf8(reader.file)});
      EXPECT_EQ(Contents(reader.file), "a newer answer");
      EXPECT_EQ(dialogs.shown.size(), fails ? 1U : 0U);
    }
  }
}

TEST_F(ResultFiles, ResultBeingReadIsNotSetAsideByANewRequest) {
  for (const auto& reader : kReaders) {
    database = fakes::Database();
    AnswerJournal(reader.updateQuery);
    Put(reader.file, ResultText("99", "1", reader.userDefData));
    atUpdateJournal = [&] { SetUnreadAside(ExchangePath(reader.file), RowOf(reader.kind).traced); };
    Read(reader.kind);
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(Files(), Names());
    Put(reader.file, "unread");
    SetUnreadAside(ExchangePath(reader.file), RowOf(reader.kind).traced);
    EXPECT_EQ(Files(), Names{AsideOf(reader)});
    std::filesystem::remove_all(folder / "Vilnor");
  }
}

TEST_F(ResultFiles, ResultOfAnUnansweredQuestionStays) {
  AnswerLink(u"SELECT * FROM Vilnor WHERE VilnorId = 4711");
  dialogs.answers = {Answer::None};
  Put(u"OutExistCase4711.xml", ResultText("3", "7", ""));
  Read(RequestKind::ExistCase);
  EXPECT_EQ(Changes(), Statements());
  EXPECT_EQ(dialogs.Texts().back(), u"440 Automation error in XMLReadExistCase");
  EXPECT_EQ(Files(), Names{"OutExistCase4711.xml"});
}

TEST_F(ResultFiles, ResultOfAQuestionIsDeletedOnlyByANo) {
  for (const auto answer : {Answer::No, Answer::Ok}) {
    AnswerLink(u"SELECT * FROM Vilnor WHERE VilnorId = 4711");
    dialogs.answers = {answer};
    Put(u"OutExistCase4711.xml", ResultText("3", "7", ""));
    Read(RequestKind::ExistCase);
    EXPECT_EQ(Changes(), Statements());
    EXPECT_EQ(Exists(u"OutExistCase4711.xml"), answer != Answer::No);
  }
}

}  // namespace
}  // namespace exchange
