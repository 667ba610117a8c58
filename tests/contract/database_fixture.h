// A connection to each product under test, with one empty table Trial.
#pragma once

#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "automation/automation_error.h"
#include "automation/date.h"
#include "automation/value.h"
#include "contract/adapters.h"
#include "contract/products.h"
#include "fakes/printing.h"
#include "platform/database.h"

namespace contract {

inline constexpr std::int32_t kErrorsInCommand = -2147217900;
inline constexpr std::int32_t kIntegrityViolation = -2147217873;
inline constexpr std::int32_t kFailure = -2147467259;
inline constexpr std::int32_t kTimeExpired = -2147217871;
inline constexpr std::int32_t kNoTransaction = -2147168242;
inline constexpr std::int32_t kTransactionExists = -2147168237;

inline constexpr std::u16string_view kClosedText =
    u"Operation is not allowed when the object is closed.";
inline constexpr std::u16string_view kOpenText =
    u"Operation is not allowed when the object is open.";

// Number and description of the error that `action` raises; number 0 when it raises none.
struct Raised {
  std::int32_t number = 0;
  std::u16string text;
};

template <class Action>
Raised ErrorOf(Action&& action) {
  try {
    action();
  } catch (const automation::AutomationError& error) {
    return {error.number(), error.description()};
  }
  return {};
}

// Matches a text with `part` anywhere in it.
inline auto HasText(std::u16string part) {
  return testing::ResultOf(
      [part = std::move(part)](const std::u16string& text) {
        return text.find(part) != std::u16string::npos;
      },
      testing::IsTrue());
}

inline automation::Date Moment(int year, int month, int day, int hour = 0, int minute = 0,
                               int second = 0) {
  return automation::MakeDate({year, month, day, hour, minute, second});
}

class DatabaseContract : public testing::TestWithParam<Product> {
 protected:
  void SetUp() override;
  void TearDown() override;

  std::unique_ptr<platform::Connection> NewOpenConnection();
  // Runs a statement whose rows, if any, are of no interest.
  void Run(const std::u16string& statement) { connection->Execute(statement, -1); }
  // Client-side, static, batch optimistic: as the component opens its queries.
  std::unique_ptr<platform::Recordset> Query(const std::u16string& statement);
  // The first field of the first row.
  automation::Value Scalar(const std::u16string& statement);

  std::unique_ptr<platform::Database> database = NewDatabase();
  std::unique_ptr<platform::Connection> connection;
};

}  // namespace contract
