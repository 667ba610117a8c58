#include "exchange/result_document_reader.h"

#include "automation/automation_error.h"
#include "platform/conversions.h"
#include "platform/platform.h"

namespace exchange {
namespace {

template <class Variable, class Convert>
bool ReadElement(platform::ResultDocument& document, std::u16string_view tag, Variable& variable,
                 Convert convert) {
  try {
    variable = convert(document.FirstValue(std::u16string(tag)));
    return true;
  } catch (const automation::AutomationError& error) {
    if (!error.Is(automation::RuntimeError::ObjectNotSet)) {
      throw;
    }
    return false;
  }
}

}  // namespace

ResultDocumentReader::ResultDocumentReader(const std::u16string& path)
    : document_(platform::Current().resultDocuments.New()) {
  document_->Load(path);
}

platform::ParseError ResultDocumentReader::Error() const {
  return document_->GetParseError();
}

bool ResultDocumentReader::Read(std::u16string_view tag, double& variable) const {
  return ReadElement(*document_, tag, variable, platform::ToDouble);
}

bool ResultDocumentReader::Read(std::u16string_view tag, std::int32_t& variable) const {
  return ReadElement(*document_, tag, variable, platform::ToInt32);
}

bool ResultDocumentReader::Read(std::u16string_view tag, std::u16string& variable) const {
  return ReadElement(*document_, tag, variable, platform::ToText);
}

}  // namespace exchange
