// Any bytes as a result file, read by one of the three readers. The first byte chooses the reader,
// the user's answer, and whether the case is linked already.
#include <array>
#include <string>

#include "exchange/result_readers.h"
#include "fuzz/world.h"

namespace {

class CountingEvents : public exchange::Events {
 public:
  void UpdateJournal() override { ++raised; }
  int raised = 0;
};

// The lookups of link 7, of application 7 and of patient 7's case "1", answered.
void Link(fakes::Database& database) {
  const fakes::Rows link{{u"VilnorId", u"Journal_ID", u"CaseId"}, {{7, 70, u"1"}}};
  for (const auto* query : {u"SELECT * FROM Vilnor WHERE VilnorId = 7",
                            u"SELECT * FROM Vilnor WHERE FHP_ID = 7 and CaseType = 1",
                            u"SELECT * FROM Vilnor WHERE PID = 7 and CaseType = 9 and CaseId = '1'",
                            u"SELECT Journal_ID from Vilnor Where VilnorID= 7",
                            u"SELECT Journal_ID from Vilnor Where FHP_ID= 7 AND CaseType = 1",
                            u"SELECT Journal_ID from Vilnor Where PID= 7 AND CaseType = 9"}) {
    database.Answer(query, link);
  }
  database.Answer(u"SELECT Tekst from Journal Where ID = 70", {{u"Tekst"}, {{u"ref.nr !1"}}});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  using exchange::RequestKind;
  constexpr auto kKinds =
      std::to_array({RequestKind::NewCase, RequestKind::NewFHP, RequestKind::ExistCase});
  const unsigned choice = data[0];
  const RequestKind kind = kKinds.at(choice % kKinds.size());
  const std::string file = automation::ToUtf8(exchange::RowOf(kind).resultWord.substr(1)) + "7.xml";
  fuzz::World world;
  world.database.AnswerIdentities({700, 70});
  if ((choice & 4U) != 0) {
    Link(world.database);
  }
  world.dialogs.answers.assign((choice & 8U) != 0 ? 1 : 0, platform::Answer::Yes);
  fuzz::World::Empty();
  fuzz::World::Put(file, fuzz::Bytes(data + 1, size - 1));
  CountingEvents events;
  exchange::ReadResult(
      {.kind = kind, .key = 7, .folder = fuzz::World::PathOf(""), .events = &events});

  fuzz::Require(!world.database.InTransaction());
  fuzz::Require(world.dialogs.shown.size() <= 2 && events.raised <= 1);
  // A result that was read completely is deleted, as is an update that no later read could enter.
  // After any other error the file still exists, under its own name or set aside.
  const auto isFinal = [](const auto& box) {
    return box.text.ends_with(u" in UpdateCase") || box.text.ends_with(u" in UpdateCaseById");
  };
  const bool wroteAll =
      world.dialogs.shown.empty() || isFinal(world.dialogs.shown.back()) || (choice & 8U) != 0;
  fuzz::Require(wroteAll || fuzz::World::HasAny(file.substr(0, file.size() - 4)) ||
                kind == RequestKind::ExistCase);
  return 0;
}
