#include "util/error_trap.h"

#include <string>

#include "automation/text.h"
#include "platform/platform.h"

namespace util {

void ShowError(const automation::AutomationError& error, std::u16string_view procedure,
               platform::Icon icon) {
  platform::Current().dialogs.Show({.text = automation::Decimal10(error.number()) + u" " +
                                            error.description() + std::u16string(procedure),
                                    .title = std::u16string(kBoxTitle),
                                    .icon = icon,
                                    .buttons = platform::Buttons::Ok});
}

}  // namespace util
