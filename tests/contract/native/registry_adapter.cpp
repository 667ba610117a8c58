#include "contract/registry_adapter.h"

#include "fakes/fake_database.h"
#include "fakes/fakes.h"
#include "portable/local_files.h"
#include "portable/memory_registry.h"
#include "portable/xml_documents.h"

namespace contract {
namespace {

constexpr std::uint32_t kNumberType = 4;

struct Outside {
  fakes::Clock clock;
  fakes::Locale locale;
  fakes::Dialogs dialogs;
  fakes::Processes processes;
  portable::LocalFiles files;
  fakes::UserSettings userSettings;
  portable::MemoryRegistry registry;
  fakes::Database database;
  portable::XmlDocuments documents;
  fakes::WindowSystem windows;
  platform::Platform platform{clock,        locale,   dialogs,  processes, files,
                              userSettings, registry, database, documents, windows};
};

Outside& TheOutside() {
  static Outside outside;
  return outside;
}

}  // namespace

platform::Platform& RegistryPlatform() {
  return TheOutside().platform;
}

void SetNumber(const std::u16string& path, const std::u16string& name) {
  TheOutside().registry.SetOther(portable::MemoryRegistry::kCurrentUser, path, name, kNumberType);
}

}  // namespace contract
