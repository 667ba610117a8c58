// A result file of any content, read by each of the three readers. The first byte chooses the
// reader, the user's answer, and whether the case is linked already.
#include <string>

#include "exchange/result_readers.h"
#include "fuzz/world.h"

namespace {

class Host : public exchange::ResultReaderHost {
 public:
  explicit Host(std::u16string folder) : folder_(std::move(folder)) {}
  std::u16string GetVilnorOutputPath() override { return folder_; }
  void RaiseUpdateJournal() override { ++raised; }
  int raised = 0;

 private:
  std::u16string folder_;
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
  enum : unsigned { ReadsCase, ReadsApplication, ReadsExisting };
  const unsigned choice = data[0];
  const unsigned reader = choice % 3;
  const std::string file = std::string(reader == ReadsCase          ? "OutNewCase7"
                                       : reader == ReadsApplication ? "OutNewFHP7"
                                                                    : "OutExistCase7") +
                           ".xml";
  fuzz::World world;
  world.database.AnswerIdentities({700, 70});
  if ((choice & 4U) != 0) {
    Link(world.database);
  }
  world.dialogs.answers.assign((choice & 8U) != 0 ? 1 : 0, platform::Answer::Yes);
  fuzz::World::Empty();
  fuzz::World::Put(file, fuzz::Bytes(data + 1, size - 1));
  Host host(fuzz::World::PathOf(""));
  reader == ReadsCase          ? exchange::ReadNewCase(7, host)
  : reader == ReadsApplication ? exchange::ReadNewFHP(7, host)
                               : exchange::ReadExistCase(7, host);

  fuzz::Require(!world.database.InTransaction());
  fuzz::Require(world.dialogs.shown.size() <= 2 && host.raised <= 1);
  // What was read to its end is done with, and so is an update that no reading could enter; what
  // another error stopped is still there, under its name or set aside.
  const auto isFinal = [](const auto& box) {
    return box.text.ends_with(u" in UpdateCase") || box.text.ends_with(u" in UpdateCaseById");
  };
  const bool wroteAll =
      world.dialogs.shown.empty() || isFinal(world.dialogs.shown.back()) || (choice & 8U) != 0;
  fuzz::Require(wroteAll || fuzz::World::HasAny(file.substr(0, file.size() - 4)) ||
                reader == ReadsExisting);
  return 0;
}
