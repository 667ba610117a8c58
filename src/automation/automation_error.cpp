#include "automation/automation_error.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "automation/text.h"

namespace automation {
namespace {

struct RuntimeText {
  std::int32_t number;
  std::u16string_view text;
};

constexpr std::array kRuntimeTexts = {
    RuntimeText{5, u"Invalid procedure call or argument"},
    RuntimeText{6, u"Overflow"},
    RuntimeText{7, u"Out of memory"},
    RuntimeText{9, u"Subscript out of range"},
    RuntimeText{13, u"Type mismatch"},
    RuntimeText{52, u"Bad file name or number"},
    RuntimeText{53, u"File not found"},
    RuntimeText{55, u"File already open"},
    RuntimeText{57, u"Device I/O error"},
    RuntimeText{58, u"File already exists"},
    RuntimeText{61, u"Disk full"},
    RuntimeText{68, u"Device unavailable"},
    RuntimeText{70, u"Permission denied"},
    RuntimeText{75, u"Path/File access error"},
    RuntimeText{76, u"Path not found"},
    RuntimeText{91, u"Object variable or With block variable not set"},
    RuntimeText{94, u"Invalid use of Null"},
    RuntimeText{424, u"Object required"},
    RuntimeText{429, u"ActiveX component can't create object"},
    RuntimeText{438, u"Object doesn't support this property or method"},
    RuntimeText{440, u"Automation error"},
    RuntimeText{445, u"Object doesn't support this action"},
};

struct OleNumber {
  std::uint32_t hresult;
  std::int32_t number;
};

// OLE codes for which the runtime has its own error number.
constexpr std::array kOleNumbers = {
    OleNumber{0x80004001, 445},  // E_NOTIMPL
    OleNumber{0x80004002, 430},  // E_NOINTERFACE
    OleNumber{0x8007000E, 7},    // E_OUTOFMEMORY
    OleNumber{0x80070005, 70},   // E_ACCESSDENIED
    OleNumber{0x80070057, 5},    // E_INVALIDARG
    OleNumber{0x80020003, 438},  // DISP_E_MEMBERNOTFOUND
    OleNumber{0x80020005, 13},   // DISP_E_TYPEMISMATCH
    OleNumber{0x80020006, 438},  // DISP_E_UNKNOWNNAME
    OleNumber{0x80020008, 458},  // DISP_E_BADVARTYPE
    OleNumber{0x8002000A, 6},    // DISP_E_OVERFLOW
    OleNumber{0x8002000B, 9},    // DISP_E_BADINDEX
    OleNumber{0x8002000E, 450},  // DISP_E_BADPARAMCOUNT
    OleNumber{0x80030002, 53},   // STG_E_FILENOTFOUND
    OleNumber{0x80030003, 76},   // STG_E_PATHNOTFOUND
    OleNumber{0x80030005, 70},   // STG_E_ACCESSDENIED
    OleNumber{0x80030008, 7},    // STG_E_INSUFFICIENTMEMORY
    OleNumber{0x80030070, 61},   // STG_E_MEDIUMFULL
    OleNumber{0x80040154, 429},  // REGDB_E_CLASSNOTREG
    OleNumber{0x800401F3, 429},  // CO_E_CLASSSTRING
};

constexpr std::uint32_t kControlErrors = 0x800A0000;

}  // namespace

AutomationError::AutomationError(std::int32_t number, std::u16string source,
                                 std::u16string description)
    : number_(number),
      source_(std::move(source)),
      description_(std::move(description)),
      what_(std::to_string(number_) + " " + ToUtf8(description_)) {}

AutomationError::AutomationError(RuntimeError error)
    : AutomationError(static_cast<std::int32_t>(error), u"",
                      RuntimeErrorText(static_cast<std::int32_t>(error))) {}

std::u16string RuntimeErrorText(std::int32_t number) {
  const auto found = std::find_if(kRuntimeTexts.begin(), kRuntimeTexts.end(),
                                  [&](const auto& entry) { return entry.number == number; });
  return std::u16string(
      found == kRuntimeTexts.end() ? u"Application-defined or object-defined error" : found->text);
}

std::int32_t ErrorNumberFromHresult(std::int32_t hresult) {
  const auto code = static_cast<std::uint32_t>(hresult);
  if ((code & 0xFFFF0000U) == kControlErrors) {
    return static_cast<std::int32_t>(code & 0xFFFFU);
  }
  const auto found = std::find_if(kOleNumbers.begin(), kOleNumbers.end(),
                                  [&](const auto& entry) { return entry.hresult == code; });
  return found == kOleNumbers.end() ? hresult : found->number;
}

AutomationError ErrorFromHresult(std::int32_t hresult, std::u16string source,
                                 std::u16string description) {
  const std::int32_t number = ErrorNumberFromHresult(hresult);
  if (description.empty()) {
    description = number == hresult ? RuntimeErrorText(440) : RuntimeErrorText(number);
  }
  return {number, std::move(source), std::move(description)};
}

}  // namespace automation
