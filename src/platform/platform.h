// The component's outside world, supplied at the edge (the COM shell or a test) and reached through
// one per-thread accessor.
#pragma once

namespace platform {

class Clock;
class Locale;
class Dialogs;
class Processes;
class Files;
class UserSettings;
class RegistryApi;
class Database;
class ResultDocuments;
class WindowSystem;
class Trace;

struct Platform {
  Clock& clock;
  Locale& locale;
  Dialogs& dialogs;
  Processes& processes;
  Files& files;
  UserSettings& userSettings;
  RegistryApi& registry;
  Database& database;
  ResultDocuments& resultDocuments;
  WindowSystem& windows;
  Trace& trace;
};

// The calling thread's platform; Use() must have been called on the thread.
Platform& Current();
// Sets the calling thread's platform. The caller keeps it alive for as long as the thread calls the
// component.
void Use(Platform& platform);

}  // namespace platform
