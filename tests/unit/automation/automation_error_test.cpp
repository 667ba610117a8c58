#include "automation/automation_error.h"

#include <gtest/gtest.h>

namespace automation {
namespace {

TEST(ErrorTexts, RuntimeErrorsHaveTheirClassicTexts) {
  struct Known {
    std::int32_t number;
    const char16_t* text;
  };
  for (const auto& [number, text] : {Known{5, u"Invalid procedure call or argument"},
                                     Known{6, u"Overflow"},
                                     Known{7, u"Out of memory"},
                                     Known{9, u"Subscript out of range"},
                                     Known{13, u"Type mismatch"},
                                     Known{52, u"Bad file name or number"},
                                     Known{53, u"File not found"},
                                     Known{55, u"File already open"},
                                     Known{57, u"Device I/O error"},
                                     Known{58, u"File already exists"},
                                     Known{61, u"Disk full"},
                                     Known{68, u"Device unavailable"},
                                     Known{70, u"Permission denied"},
                                     Known{75, u"Path/File access error"},
                                     Known{76, u"Path not found"},
                                     Known{91, u"Object variable or With block variable not set"},
                                     Known{94, u"Invalid use of Null"},
                                     Known{424, u"Object required"},
                                     Known{429, u"ActiveX component can't create object"},
                                     Known{438, u"Object doesn't support this property or method"},
                                     Known{440, u"Automation error"},
                                     Known{445, u"Object doesn't support this action"}}) {
    EXPECT_EQ(RuntimeErrorText(number), text) << number;
  }
  EXPECT_EQ(RuntimeErrorText(4242), u"Application-defined or object-defined error");
}

TEST(ErrorTexts, ComErrorTextComesFromTheObjectElseFromTheRuntime) {
  EXPECT_EQ(ErrorFromHresult(-2147217900, u"", u"near \"x\"").description(), u"near \"x\"");
  EXPECT_EQ(ErrorFromHresult(-2147217900, u"", u"").description(), u"Automation error");
  EXPECT_EQ(ErrorFromHresult(static_cast<std::int32_t>(0x80020005), u"", u"").description(),
            u"Type mismatch");
}

TEST(RuntimeErrors, RuntimeErrorHasNumberAndTextAndNoSource) {
  struct Known {
    RuntimeError error;
    std::int32_t number;
  };
  for (const auto& [error, number] :
       {Known{RuntimeError::InvalidProcedureCall, 5}, Known{RuntimeError::Overflow, 6},
        Known{RuntimeError::OutOfMemory, 7}, Known{RuntimeError::SubscriptOutOfRange, 9},
        Known{RuntimeError::TypeMismatch, 13}, Known{RuntimeError::BadFileName, 52},
        Known{RuntimeError::FileNotFound, 53}, Known{RuntimeError::DeviceIoError, 57},
        Known{RuntimeError::FileAlreadyExists, 58}, Known{RuntimeError::DiskFull, 61},
        Known{RuntimeError::DeviceUnavailable, 68}, Known{RuntimeError::PermissionDenied, 70},
        Known{RuntimeError::PathFileAccess, 75}, Known{RuntimeError::PathNotFound, 76},
        Known{RuntimeError::ObjectNotSet, 91}, Known{RuntimeError::InvalidUseOfNull, 94},
        Known{RuntimeError::CannotCreateObject, 429},
        Known{RuntimeError::AutomationFailure, 440}}) {
    const AutomationError raised(error);
    EXPECT_EQ(raised.number(), number);
    EXPECT_EQ(raised.description(), RuntimeErrorText(number));
    EXPECT_EQ(raised.source(), u"");
    EXPECT_TRUE(raised.Is(error));
  }
}

TEST(Errors, ErrorIsLoggedByNumberAndDescription) {
  EXPECT_STREQ(AutomationError(53, u"Files", u"Åsas fil").what(), "53 Åsas fil");
}

TEST(ErrorNumbers, ComErrorNumbersFollowTheRuntime) {
  struct Known {
    std::uint32_t code;
    std::int32_t number;
  };
  for (const auto& [code, number] :
       {Known{0x80004001, 445}, Known{0x80004002, 430}, Known{0x8007000E, 7}, Known{0x80070005, 70},
        Known{0x80070057, 5}, Known{0x80020003, 438}, Known{0x80020005, 13}, Known{0x80020006, 438},
        Known{0x80020008, 458}, Known{0x8002000A, 6}, Known{0x8002000B, 9}, Known{0x8002000E, 450},
        Known{0x80030002, 53}, Known{0x80030003, 76}, Known{0x80030005, 70}, Known{0x80030008, 7},
        Known{0x80030070, 61}, Known{0x80040154, 429}, Known{0x800401F3, 429}}) {
    EXPECT_EQ(ErrorNumberFromHresult(static_cast<std::int32_t>(code)), number) << std::hex << code;
  }
}

TEST(ErrorNumbers, ControlErrorNumberIsItsLowWordAndOthersAreUnchanged) {
  EXPECT_EQ(ErrorNumberFromHresult(static_cast<std::int32_t>(0x800A0E78)), 3704);
  EXPECT_EQ(ErrorNumberFromHresult(static_cast<std::int32_t>(0x800AFFFF)), 65535);
  EXPECT_EQ(ErrorNumberFromHresult(static_cast<std::int32_t>(0x800B0001)), -2146762751);
  EXPECT_EQ(ErrorNumberFromHresult(static_cast<std::int32_t>(0x80040E14)), -2147217900);
}

}  // namespace
}  // namespace automation
