// A complete fake platform.
#pragma once

#include "fakes/adapters.h"
#include "fakes/fake_database.h"
#include "fakes/fakes.h"
#include "fakes/memory_registry.h"
#include "fakes/trace.h"
#include "fakes/with.h"
#include "platform/platform.h"

namespace fakes {

struct Ports {
  Clock clock;
  Locale locale;
  Dialogs dialogs;
  Processes processes;
  RealFiles files;
  UserSettings userSettings;
  fakes::MemoryRegistry registry;
  Database database;
  RealDocuments documents;
  WindowSystem windows;
  Trace trace;
  platform::Platform ports{clock,    locale,   dialogs,   processes, files, userSettings,
                           registry, database, documents, windows,   trace};
};

}  // namespace fakes
