// How GoogleTest prints the component's types: readable instead of bytes.
#pragma once

#include <ostream>
#include <string>

#include "automation/automation_error.h"
#include "automation/conversion.h"
#include "automation/date.h"
#include "automation/regional.h"
#include "automation/text.h"
#include "automation/value.h"
#include "platform/dialogs.h"

namespace fakes {

// Runs `action` and gives the number of the AutomationError that it raises, 0 for none.
template <class Action>
std::int32_t ErrorNumberOf(Action&& action) {
  try {
    action();
  } catch (const automation::AutomationError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace fakes

namespace automation {

inline void PrintTo(const DateParts& parts, std::ostream* out) {
  *out << parts.year << '-' << parts.month << '-' << parts.day << ' ' << parts.hour << ':'
       << parts.minute << ':' << parts.second;
}

inline void PrintTo(const Date& date, std::ostream* out) {
  *out << "day " << date.days;
}

inline void PrintTo(const Value& value, std::ostream* out) {
  *out << (value.IsNull() ? "Null" : ToUtf8(ToText(value, Regional())));
}

}  // namespace automation

namespace platform {

inline void PrintTo(const MessageBox& box, std::ostream* out) {
  *out << "[" << automation::ToUtf8(box.title) << "] " << automation::ToUtf8(box.text) << " icon "
       << static_cast<int>(box.icon) << " buttons " << static_cast<int>(box.buttons);
}

}  // namespace platform
