#include "registry/errors.h"

#include "automation/automation_error.h"

namespace registry {

void RaiseCannotOpen() {
  throw automation::AutomationError(kCannotOpen, u"GetKeyInfo", u"Unable to open Key");
}

}  // namespace registry
