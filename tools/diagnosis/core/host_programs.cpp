#include "diagnosis/core/host_programs.h"

#include "diagnosis/core/rehearsal.h"
#include "host/link_program.h"

namespace diagnosis {
namespace {

std::u16string_view LastPartOf(std::u16string_view path) {
  return path.substr(path.rfind(u'\\') + 1);
}

}  // namespace

RegisteredKey ReadRegisteredKey(platform::Platform& platform, std::u16string_view keyPath) {
  const Rehearsal rehearsal(platform);
  RegisteredKey key;
  try {
    key.path = host::RegisteredPath(keyPath);
  } catch (const automation::AutomationError& error) {
    key.refusal = error;
  }
  key.missing = !rehearsal.registry().missing().empty();
  return key;
}

std::vector<std::u16string> HostPrograms(platform::Platform& platform) {
  std::vector<std::u16string> programs;
  for (const auto registration : host::kHostRegistrations) {
    if (const auto key = ReadRegisteredKey(platform, registration); !key.path.empty()) {
      const std::u16string_view separator = key.path.ends_with(u'\\') ? u"" : u"\\";
      for (const auto program : host::kHostRegistrations) {
        programs.push_back(key.path + std::u16string(separator) +
                           std::u16string(LastPartOf(program)));
      }
      break;
    }
  }
  return programs;
}

}  // namespace diagnosis
