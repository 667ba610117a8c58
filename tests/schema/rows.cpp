#include "schema/rows.h"

#include <cstdint>
#include <utility>

#include "automation/conversion.h"
#include "automation/text.h"

namespace schema {
namespace {

const automation::Regional kSwedish = {
    .shortDate = u"yyyy-MM-dd", .decimalSeparator = u',', .twelveHourClock = false};

}  // namespace

std::vector<std::u16string> Rows(platform::Connection& connection, const std::u16string& columns,
                                 const std::u16string& rest) {
  const auto width = static_cast<std::int32_t>(automation::Split(columns, u',').size());
  const auto rows =
      connection.Execute(u"SELECT " + columns + u" FROM " + rest, platform::kOptionsUnspecified);
  std::vector<std::u16string> texts;
  for (; !rows->Eof(); rows->MoveNext()) {
    std::u16string row;
    for (std::int32_t column = 0; column < width; ++column) {
      const auto value = rows->Field(column);
      row += column == 0 ? u"" : u"|";
      row += value.IsNull() ? u"NULL" : automation::ToText(value, kSwedish);
    }
    texts.push_back(std::move(row));
  }
  return texts;
}

}  // namespace schema
