#include "odbc/ado_error.h"

#include <algorithm>
#include <array>

namespace odbc {
namespace {

struct AdoText {
  AdoError error;
  std::u16string_view text;
};

constexpr std::array kAdoTexts = {
    AdoText{AdoError::WrongArguments,
            u"Arguments are of the wrong type, are out of acceptable range, or are in conflict "
            u"with one another."},
    AdoText{AdoError::NoCurrentRecord,
            u"Either BOF or EOF is True, or the current record has been deleted. Requested "
            u"operation requires a current record."},
    AdoText{AdoError::OperationInContext, u"Operation is not allowed in this context."},
    AdoText{AdoError::FeatureNotAvailable,
            u"Object or provider is not capable of performing requested operation."},
    AdoText{AdoError::ItemNotFound,
            u"Item cannot be found in the collection corresponding to the requested name or "
            u"ordinal."},
    AdoText{AdoError::WrongValueType,
            u"Application uses a value of the wrong type for the current operation."},
    AdoText{AdoError::ObjectClosed, u"Operation is not allowed when the object is closed."},
    AdoText{AdoError::ObjectOpen, u"Operation is not allowed when the object is open."},
    AdoText{AdoError::ProviderNotFound,
            u"Provider cannot be found. It may not be properly installed."},
    AdoText{AdoError::InvalidConnection,
            u"The connection cannot be used to perform this operation. It is either closed or "
            u"invalid in this context."},
};

}  // namespace

std::u16string_view DescriptionOf(AdoError error) {
  const auto* const found = std::find_if(kAdoTexts.begin(), kAdoTexts.end(),
                                         [&](const auto& entry) { return entry.error == error; });
  return found->text;
}

automation::AutomationError MakeError(AdoError error, std::u16string_view source) {
  return {static_cast<std::int32_t>(error), std::u16string(source),
          std::u16string(DescriptionOf(error))};
}

automation::AutomationError MakeError(ProviderError error, std::u16string_view text) {
  return {static_cast<std::int32_t>(error), std::u16string(kProviderSource), std::u16string(text)};
}

}  // namespace odbc
