#include "automation/current_error.h"

#include <new>

namespace automation {

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

}  // namespace automation
