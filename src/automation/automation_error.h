// The one error of the component, as the classic Basic runtime raises it: number, source, text.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace automation {

// Numbers of the runtime's own errors; their texts are in automation_error.cpp.
enum class RuntimeError : std::int32_t {
  InvalidProcedureCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  BadFileName = 52,
  FileNotFound = 53,
  DeviceIoError = 57,
  FileAlreadyExists = 58,
  DiskFull = 61,
  DeviceUnavailable = 68,
  PermissionDenied = 70,
  PathFileAccess = 75,
  PathNotFound = 76,
  ObjectNotSet = 91,
  InvalidUseOfNull = 94,
  CannotCreateObject = 429,
  AutomationFailure = 440,
};

class AutomationError : public std::exception {
 public:
  AutomationError(std::int32_t number, std::u16string source, std::u16string description);
  // A runtime error with its own text and no source.
  explicit AutomationError(RuntimeError error);

  std::int32_t number() const { return number_; }
  const std::u16string& source() const { return source_; }
  const std::u16string& description() const { return description_; }
  bool Is(RuntimeError error) const { return number_ == static_cast<std::int32_t>(error); }
  // "number description" in UTF-8, for logs and test output.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::int32_t number_;
  std::u16string source_;
  std::u16string description_;
  std::string what_;
};

// The text of a runtime error, for example 91 "Object variable or With block variable not set";
// "Application-defined or object-defined error" for a number that has none.
std::u16string RuntimeErrorText(std::int32_t number);

// The error for a failed COM call. `description` is the text from the object's IErrorInfo and may
// be empty. 0x800Axxxx becomes its low word (ADO's 3704), an OLE code becomes its runtime number if
// it has one, and any other code stays a signed number.
AutomationError ErrorFromHresult(std::int32_t hresult, std::u16string source,
                                 std::u16string description);

// The number only, by the same rule.
std::int32_t ErrorNumberFromHresult(std::int32_t hresult);

}  // namespace automation
