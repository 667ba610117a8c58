// A whole platform of doubles, for the rooms that know nothing of the host's database.
#pragma once

#include <gtest/gtest.h>

#include "fakes/fake_database.h"
#include "fakes/fakes.h"
#include "fakes/printing.h"
#include "platform/platform.h"
#include "portable/local_files.h"
#include "portable/memory_registry.h"
#include "portable/xml_documents.h"

namespace fakes {

class PortsFixture : public testing::Test {
 protected:
  PortsFixture() { platform::Use(ports); }

  Clock clock;
  Locale locale;
  Dialogs dialogs;
  Processes processes;
  portable::LocalFiles files;
  UserSettings userSettings;
  portable::MemoryRegistry registry;
  Database database;
  portable::XmlDocuments documents;
  WindowSystem windows;
  platform::Platform ports{clock,        locale,   dialogs,  processes, files,
                           userSettings, registry, database, documents, windows};
};

}  // namespace fakes
