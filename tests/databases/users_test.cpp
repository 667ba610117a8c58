// The user mapping, through DBVilnor and through BVilnor.
#include "databases/clinic.h"
#include "host/b_vilnor.h"

namespace databases {
namespace {

using Texts = std::vector<std::u16string>;

class CountedEvents : public exchange::Events {
 public:
  void UpdateJournal() override { ++count; }
  int count = 0;
};

class Users : public Clinic {
 protected:
  Users() {
    vilnor.InitVilnor(session.gConnectionParameter, session.gKestraLangID, session.gDbType);
  }
  Texts NamesOf4711() { return Rows(u"UserName", u"VilnorPasient WHERE PID = 4711"); }

  CountedEvents events;
  host::BVilnor vilnor{events};
};

TEST_P(Users, UserIsAddedFoundChangedAndDeletedByTheHost) {
  EXPECT_EQ(vilnor.GetVilnorUserByPID(4711), u"");
  vilnor.AddNewVilnorUser(4711, u"'åsa.öberg'");
  EXPECT_EQ(vilnor.GetVilnorUserByPID(4711), u"åsa.öberg");
  vilnor.UpdateVilnorUser(4711, u"'märta'");
  EXPECT_EQ(vilnor.GetVilnorUserByPID(4711), u"märta");
  EXPECT_EQ(NamesOf4711(), Texts{u"märta"});
  vilnor.DeleteVilnorUser(4711);
  EXPECT_EQ(NamesOf4711(), Texts());
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(Users, UpdateWithANameInsertsTheUserAndWithoutOneDeletesIt) {
  vilnor.UpdateVilnorUser(4711, u"'åsa'");
  EXPECT_EQ(NamesOf4711(), Texts{u"åsa"});
  vilnor.UpdateVilnorUser(4711, u"");
  EXPECT_EQ(NamesOf4711(), Texts());
  vilnor.UpdateVilnorUser(4711, u"");
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(Users, UserNameRefusedByTheDatabaseShowsItsErrorAndChangesNothing) {
  vilnor.UpdateVilnorUser(5012, u"björn ek");
  ExpectProvidersBox(u"AddNewVilnorUser");
  EXPECT_EQ(Only(u"UserName", u"VilnorPasient WHERE PID = 5012"), u"bjorn.ek");
}

TEST_P(Users, UserOperationsReleaseTheConnection) {
  vilnor.GetVilnorUserByPID(5012);
  EXPECT_EQ(db::CurrentConnectionState().gConnection, nullptr);
  EXPECT_EQ(db::CurrentConnectionState().gDB, nullptr);
}

TEST_P(Users, FHPExistsOfAUserRaisesFourEventsWithOrWithoutALinkedApplication) {
  EXPECT_TRUE(vilnor.FHPExists(71));
  EXPECT_FALSE(vilnor.FHPExists(77));
  EXPECT_EQ(events.count, 8);
  EXPECT_TRUE(Boxes().empty());
}

INSTANTIATE_FOR_PRODUCTS(Users);

}  // namespace
}  // namespace databases
