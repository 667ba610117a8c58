#include "exchange/result_document_reader.h"

#include "automation/automation_error.h"
#include "platform/conversions.h"
#include "platform/platform.h"

namespace exchange {
namespace {

template <class Variable, class Convert>
void ReadElement(platform::ResultDocument& document, std::u16string_view tag, Variable& variable,
                 Convert convert) {
  try {
    variable = convert(document.FirstValue(std::u16string(tag)));
  } catch (const automation::AutomationError& error) {
    if (!error.Is(automation::RuntimeError::ObjectNotSet)) {
      throw;
    }
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

void ResultDocumentReader::Read(std::u16string_view tag, double& variable) const {
  ReadElement(*document_, tag, variable, platform::ToDouble);
}

void ResultDocumentReader::Read(std::u16string_view tag, std::int32_t& variable) const {
  ReadElement(*document_, tag, variable, platform::ToInt32);
}

void ResultDocumentReader::Read(std::u16string_view tag, std::u16string& variable) const {
  ReadElement(*document_, tag, variable, platform::ToText);
}

}  // namespace exchange
