// What the statements trust. SECURITY.md says how an installation protects it.
#include "databases/clinic.h"
#include "db/db_vilnor.h"

namespace databases {
namespace {

class StatementTrust : public Clinic {};
INSTANTIATE_FOR_PRODUCTS(StatementTrust);

TEST_P(StatementTrust, CaseIdWithSqlWidensWhatIsDeleted) {
  const auto links = [this] { return Rows(u"VilnorId", u"Vilnor ORDER BY VilnorId").size(); };
  const auto before = links();
  db::DBVilnor().DeleteCase(u"none' OR '1'='1");
  EXPECT_EQ(Boxes().size(), 0U);
  EXPECT_EQ(links(), before - 1);
}

}  // namespace
}  // namespace databases
