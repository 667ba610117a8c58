// Every way in which the reading of a result ends gives one line: what became of the file, and why.
#include <filesystem>
#include <set>

#include "exchange/result_files.h"
#include "parser_limits/parser_limits.h"
#include "unit/exchange/result_fixture.h"

namespace exchange {
namespace {

using platform::Reason;
using Lines = std::vector<std::string>;

class TracedResults : public ResultReaders {
 protected:
  TracedResults() { trace.TurnOn(); }

  // The lines about files.
  Lines FileLines() const {
    Lines texts;
    for (const auto& line : trace.lines) {
      if (line.file != platform::TracedFile::None) {
        texts.push_back(fakes::Trace::TextOf(line));
      }
    }
    return texts;
  }
  // Nothing in the folder, the database or the trace.
  void Begin(const Reader& reader) {
    std::filesystem::remove_all(folder / "Vilnor");
    database = fakes::Database();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    dialogs = fakes::Dialogs();
    atUpdateJournal = [] {};
    updateJournals = 0;
    trace.lines.clear();
    AnswerJournal(reader.updateQuery);
    AnswerLink(u"SELECT * FROM Vilnor WHERE VilnorId = 4711");
  }
  void PutResult(const Reader& reader, const std::optional<std::string>& cancelled,
                 const std::optional<std::string>& status) const {
    Put(reader.file, ResultText(cancelled, status, reader.userDefData));
  }
};

// How a reading can end. `line` follows the reader's and the file's name.
struct End {
  Reason reason;
  std::string line;
  std::function<void(const Reader&)> arrange;
  // Whether nothing else shows it: no box, no event, no row.
  bool isSilent = false;
  bool ofNew = true;
  bool ofExisting = true;
};

class EveryEnd : public TracedResults {
 protected:
  std::vector<End> Ends() {
    auto ends = EndsOfReadableFiles();
    for (auto& end : EndsOfUnreadableFiles()) {
      ends.push_back(std::move(end));
    }
    return ends;
  }

 private:
  std::vector<End> EndsOfReadableFiles() {
    return {
        {Reason::Entered, "Deleted Entered", [&](auto& r) { PutResult(r, {}, "1"); }},
        {Reason::Entered, "LeftToNewer Entered",
         [&](auto& r) {
           PutResult(r, {}, "1");
           atUpdateJournal = [&] { Put(r.file, "<newer/>"); };
         }},
        {.reason = Reason::AlreadyLinked,
         .line = "Deleted AlreadyLinked",
         .arrange =
             [&](auto& r) {
               AnswerLink(r.existsQuery);
               PutResult(r, {}, "5");
             },
         .ofExisting = false},
        {.reason = Reason::NotLinked,
         .line = "Deleted NotLinked",
         .arrange = [&](auto& r) { PutResult(r, {}, "7"); },
         .ofExisting = false},
        {Reason::CannotBeEntered, "Deleted CannotBeEntered",
         [&](auto& r) {
           database.Answer(u"SELECT Tekst from Journal Where ID = 900",
                           {{u"Tekst"}, {{u"Ärende utan nummer"}}});
           PutResult(r, {}, "1");
         }},
        {Reason::DatabaseFailed, "SetAside DatabaseFailed",
         [&](auto& r) {
           database.FailStatement(u"Update Vilnor", kServerGone);
           PutResult(r, {}, "1");
         }},
        {.reason = Reason::Cancelled,
         .line = "Deleted Cancelled",
         .arrange = [&](auto& r) { PutResult(r, "1", "5"); },
         .isSilent = true,
         .ofExisting = false},
        {.reason = Reason::Unchanged,
         .line = "Deleted Unchanged",
         .arrange = [&](auto& r) { PutResult(r, "2", "1"); },
         .isSilent = true,
         .ofNew = false},
        {.reason = Reason::LinkKept,
         .line = "Deleted LinkKept",
         .arrange =
             [&](auto& r) {
               PutResult(r, "3", {});
               dialogs.answers = {Answer::No};
             },
         .ofNew = false},
        {.reason = Reason::Unanswered,
         .line = "Kept Unanswered",
         .arrange =
             [&](auto& r) {
               PutResult(r, "3", {});
               dialogs.answers = {Answer::None};
             },
         .ofNew = false},
        {.reason = Reason::DatabaseFailed,
         .line = "SetAside DatabaseFailed",
         .arrange =
             [&](auto& r) {
               database.FailStatement(u"SELECT * FROM Vilnor WHERE VilnorId", kServerGone);
               PutResult(r, "3", {});
             },
         .ofNew = false},
        {.reason = Reason::UnknownStatus,
         .line = "Kept UnknownStatus",
         .arrange = [&](auto& r) { PutResult(r, {}, "8"); },
         .isSilent = true},
        {Reason::Error, "Kept Error", [&](auto& r) { PutResult(r, {}, "åtta"); }},
    };
  }

  // The parser's code follows.
  std::vector<End> EndsOfUnreadableFiles() {
    return {
        {.reason = Reason::NotFound,
         .line = "Kept NotFound -",
         .arrange = [](auto&) {},
         .isSilent = true},
        {.reason = Reason::Unreadable,
         .line = "Kept Unreadable -",
         .arrange =
             [&](auto& r) {
               std::filesystem::create_directories(folder / "Vilnor" / automation::ToUtf8(r.file));
             },
         .isSilent = true},
        {.reason = Reason::EmptyFile,
         .line = "Kept EmptyFile -",
         .arrange = [&](auto& r) { Put(r.file, ""); },
         .isSilent = true},
        {.reason = Reason::TooLarge,
         .line = "Kept TooLarge -",
         .arrange =
             [&](auto& r) {
               Put(r.file, "<r>");
               std::filesystem::resize_file(folder / "Vilnor" / automation::ToUtf8(r.file),
                                            parser_limits::kLargestDocument + 1);
             },
         .isSilent = true},
        {.reason = Reason::NotFit,
         .line = "Kept NotFit -",
         .arrange = [&](auto& r) { Put(r.file, "<!DOCTYPE r [<!ENTITY a 'b'>]><r>&a;</r>"); },
         .isSilent = true},
        {.reason = Reason::Malformed,
         .line = "Kept Malformed -",
         .arrange = [&](auto& r) { Put(r.file, "<r><Status>5</Id></r>"); },
         .isSilent = true},
    };
  }
};

TEST_F(EveryEnd, EveryEndOfAReadingGivesOneLine) {
  std::set<Reason> seen;
  for (const auto& reader : kReaders) {
    const bool isExisting = reader.kind == RequestKind::ExistCase;
    for (const auto& end : Ends()) {
      if (!(isExisting ? end.ofExisting : end.ofNew)) {
        continue;
      }
      SCOPED_TRACE(std::string(reader.name) + " " + end.line);
      Begin(reader);
      end.arrange(reader);
      Read(reader.kind);
      const auto lines = FileLines();
      ASSERT_EQ(lines.size(), 1U);
      EXPECT_TRUE(lines[0].starts_with(std::string(reader.name) + " " +
                                       NameOf(RowOf(reader.kind).traced) + " " + end.line))
          << lines[0];
      EXPECT_EQ(end.isSilent, dialogs.shown.empty() && updateJournals == 0 && Changes().empty())
          << "the table says wrongly whether anything else shows it";
      seen.insert(end.reason);
    }
  }
  // Each of the reasons that a reading has.
  for (auto reason = static_cast<int>(Reason::Entered);
       reason <= static_cast<int>(Reason::Malformed); ++reason) {
    EXPECT_TRUE(seen.contains(static_cast<Reason>(reason)))
        << NameOf(static_cast<Reason>(reason)) << " is not in the table";
  }
}

TEST_F(TracedResults, ReadingThatMeetsADamagedFileAtItsSecondLoadSaysWhy) {
  class Damaging : public fakes::RealFiles {
   public:
    platform::FileStamp StampOf(const std::u16string& path) noexcept override {
      damage();
      return fakes::RealFiles::StampOf(path);
    }
    std::function<void()> damage;
  } damaging;
  damaging.damage = [&] { Put(kReaders[1].file, "<r></s>"); };
  platform::Platform changed = fakes::With(ports, damaging);
  platform::Use(changed);
  Begin(kReaders[1]);
  PutResult(kReaders[1], {}, "5");
  Read(RequestKind::NewCase);
  platform::Use(ports);
  ASSERT_EQ(FileLines().size(), 1U);
  EXPECT_TRUE(FileLines()[0].starts_with("ReadNewCase NewCase Kept Malformed -")) << FileLines()[0];
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(TracedResults, UndeletableResultIsTold) {
  class Undeletable : public fakes::RealFiles {
   public:
    void DeleteFile(const std::u16string& /*path*/) override {
      throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
    }
    void RenameFile(const std::u16string& path, const std::u16string& newPath) override {
      if (refusesRenaming) {
        throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
      }
      fakes::RealFiles::RenameFile(path, newPath);
    }
    bool refusesRenaming = false;
  } undeletable;
  platform::Platform changed = fakes::With(ports, undeletable);
  platform::Use(changed);
  for (const bool refuses : {false, true}) {
    undeletable.refusesRenaming = refuses;
    Begin(kReaders[1]);
    PutResult(kReaders[1], {}, "1");
    Read(RequestKind::NewCase);
    EXPECT_EQ(FileLines(), Lines{refuses ? "ReadNewCase NewCase Kept Entered"
                                         : "ReadNewCase NewCase Renamed Entered"});
  }
  platform::Use(ports);
}

TEST_F(TracedResults, UnreadAnswerSetAsideForANewRequestIsTold) {
  const auto request = [&] {
    SetUnreadAside(ExchangePath(kReaders[0].file), RowOf(kReaders[0].kind).traced);
  };
  Begin(kReaders[0]);
  request();
  EXPECT_EQ(FileLines(), Lines{"SetUnreadAside NewFHP Empty UnreadAnswer"});
  Put(kReaders[0].file, "unread");
  request();
  EXPECT_EQ(FileLines().at(1), "SetUnreadAside NewFHP SetAside UnreadAnswer");
  class Stuck : public fakes::RealFiles {
   public:
    void RenameFile(const std::u16string& /*path*/, const std::u16string& /*newPath*/) override {
      throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
    }
  } stuck;
  platform::Platform changed = fakes::With(ports, stuck);
  platform::Use(changed);
  Put(kReaders[0].file, "unread");
  EXPECT_THROW(request(), automation::AutomationError);
  platform::Use(ports);
  EXPECT_EQ(FileLines().at(2), "SetUnreadAside NewFHP Kept UnreadAnswer 70");
}

}  // namespace
}  // namespace exchange
