// Whether the host can load the component: a process of 64 bits cannot load a DLL of 32.
#include <optional>

#include "diagnosis/core/checks.h"
#include "diagnosis/core/host_programs.h"
#include "diagnosis/core/parts.h"

namespace diagnosis {

void ExamineHostProgram(Surroundings surroundings, Findings& findings) {
  const Check& check = checks::kHostProgram;
  const auto paths = HostPrograms(surroundings.platform);
  if (paths.empty()) {
    return;
  }
  std::optional<std::u16string> usable;
  for (const auto& path : paths) {
    const int bits = surroundings.computer.Examine(path).bits;
    if (bits == 64) {
      findings.push_back({check, State::Fault,
                          path + u" är ett 64-bitarsprogram. Det kan inte ladda Vilnor.dll, som "
                                 u"har 32 bitar.",
                          u"Installera Kestra Dental som 32-bitarsprogram."});
      return;
    }
    if (bits == 32 && !usable) {
      usable = path;
    }
  }
  findings.push_back({check,
                      State::Fine,
                      usable ? *usable + u" är ett 32-bitarsprogram."
                             : u"Kestra Dentals program ligger inte i den registrerade mappen. "
                               u"Antalet bitar är inte undersökt.",
                      {}});
}

}  // namespace diagnosis
