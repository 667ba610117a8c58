#include "util/error_trap.h"

#include <cstdint>
#include <optional>
#include <string>

#include "automation/text.h"
#include "platform/platform.h"

namespace util {

bool ShowError(const automation::AutomationError& error, Procedure procedure, platform::Icon icon) {
  const platform::Answer answer = platform::Current().dialogs.Show(
      {.text = automation::Decimal10(error.number()) + u" " + error.description() +
               std::u16string(procedure.inBox()),
       .title = std::u16string(kBoxTitle),
       .icon = icon,
       .buttons = platform::Buttons::Ok});
  return answer != platform::Answer::None;
}

Failure ReportError(Procedure procedure, platform::Icon icon, ActionRef beforeBox,
                    platform::Traced& traced) noexcept {
  using platform::Ending;
  const std::int32_t number = automation::CurrentErrorNumber();
  std::optional<automation::AutomationError> error;
  bool seen = false;
  IgnoreErrors([&] { error = automation::CurrentError(); });
  IgnoreErrors(beforeBox);
  IgnoreErrors([&] { seen = ShowError(error.value(), procedure, icon); });
  traced.End(seen ? Ending::Failed : Ending::Unshown, platform::Reason::None, number);
  return {};
}

}  // namespace util
