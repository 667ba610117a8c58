#include "util/error_trap.h"

#include <new>
#include <string>

#include "automation/text.h"
#include "platform/platform.h"

namespace util {

using automation::AutomationError;
using automation::RuntimeError;

AutomationError CurrentError() {
  try {
    throw;
  } catch (const AutomationError& error) {
    return error;
  } catch (...) {
    return AutomationError(static_cast<RuntimeError>(CurrentErrorNumber()));
  }
}

std::int32_t CurrentErrorNumber() noexcept {
  try {
    throw;
  } catch (const AutomationError& error) {
    return error.number();
  } catch (const std::bad_alloc&) {
    return static_cast<std::int32_t>(RuntimeError::OutOfMemory);
  } catch (...) {
    return static_cast<std::int32_t>(RuntimeError::AutomationFailure);
  }
}

void ShowError(const AutomationError& error, std::u16string_view procedure, platform::Icon icon) {
  platform::Current().dialogs.Show({.text = automation::Decimal10(error.number()) + u" " +
                                            error.description() + std::u16string(procedure),
                                    .title = std::u16string(kBoxTitle),
                                    .icon = icon,
                                    .buttons = platform::Buttons::Ok});
}

}  // namespace util
