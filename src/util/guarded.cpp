#include "util/guarded.h"

#include <new>
#include <string>

#include "automation/text.h"
#include "platform/platform.h"

namespace util {

using automation::AutomationError;
using automation::RuntimeError;

namespace {

thread_local std::uint32_t errorsShown = 0;

}  // namespace

AutomationError CurrentError() {
  try {
    throw;
  } catch (const AutomationError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return AutomationError(RuntimeError::OutOfMemory);
  } catch (...) {
    return AutomationError(RuntimeError::AutomationFailure);
  }
}

void ShowError(const AutomationError& error, std::u16string_view place, platform::Icon icon) {
  ++errorsShown;
  platform::Current().dialogs.Show({.text = automation::Decimal10(error.number()) + u" " +
                                            error.description() + std::u16string(place),
                                    .title = std::u16string(kBoxTitle),
                                    .icon = icon,
                                    .buttons = platform::Buttons::Ok});
}

std::uint32_t ErrorsShown() {
  return errorsShown;
}

}  // namespace util
