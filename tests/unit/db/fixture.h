// A thread's component state on a scripted database.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "db/connection_state.h"
#include "fakes/ports_fixture.h"
#include "util/session_settings.h"

namespace unit {

inline const automation::AutomationError kScriptedFailure{1001, u"Test", u"Scripted failure"};
// The box of the scripted failure.
inline std::u16string BoxIn(const std::u16string& procedure) {
  return u"1001 Scripted failure in " + procedure;
}
inline const std::u16string kAlreadyOpen =
    u"3705 Operation is not allowed when the object is open. in ";

class DbTest : public fakes::PortsFixture {
 protected:
  DbTest() {
    session = {.gConnectionParameter = u"Driver=Test;Database=clinic",
               .gKestraLangID = 1,
               .gDbType = 1,
               .gDateFormat = u"YYYY-MM-DD"};
  }

  std::vector<std::u16string> Boxes() const { return dialogs.Texts(); }

  util::SessionSettings& session = util::CurrentSettings();
};

}  // namespace unit
