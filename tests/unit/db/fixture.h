// A thread's component state on a scripted database.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "db/connection_state.h"
#include "fakes/fake_database.h"
#include "fakes/fakes.h"
#include "fakes/printing.h"
#include "platform/platform.h"
#include "portable/local_files.h"
#include "portable/memory_registry.h"
#include "portable/xml_documents.h"
#include "util/session.h"

namespace unit {

inline const automation::AutomationError kScriptedFailure{1001, u"Test", u"Scripted failure"};
// The box of the scripted failure.
inline std::u16string BoxIn(const std::u16string& procedure) {
  return u"1001 Scripted failure in " + procedure;
}
inline const std::u16string kAlreadyOpen =
    u"3705 Operation is not allowed when the object is open. in ";

class DbTest : public testing::Test {
 protected:
  DbTest() {
    ForgetThreadState();
    platform::Use(platform);
    session = {.gConnectionParameter = u"Driver=Test;Database=clinic",
               .gKestraLangID = 1,
               .gDbType = 1,
               .gDateFormat = u"YYYY-MM-DD"};
  }
  ~DbTest() override { ForgetThreadState(); }

  static void ForgetThreadState() {
    db::ReleaseGDB();
    db::ReleaseShared();
    db::CurrentConnectionState().gSql.clear();
  }

  std::vector<std::u16string> Boxes() const { return dialogs.Texts(); }

  util::Session& session = util::CurrentSession();
  fakes::Database database;
  fakes::Dialogs dialogs;
  fakes::Clock clock;
  fakes::Locale locale;
  fakes::Processes processes;
  fakes::UserSettings userSettings;
  fakes::WindowSystem windows;
  portable::LocalFiles files;
  portable::MemoryRegistry registry;
  portable::XmlDocuments documents;
  platform::Platform platform{clock,        locale,   dialogs,  processes, files,
                              userSettings, registry, database, documents, windows};
};

}  // namespace unit
