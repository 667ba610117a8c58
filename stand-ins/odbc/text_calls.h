// The ODBC calls that carry text, in the form that the driver itself supports.
//
// A driver that has only the narrow calls and takes UTF-8 (SQLite's) must get UTF-8: the driver
// manager would convert wide text to the locale's character set, Latin-1 without one, and cut off
// what does not fit. Drivers with wide calls get UTF-16.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/text.h"
#include "odbc/api.h"

namespace odbc {

enum class TextCalls { Wide, Utf8 };

struct WideCalls {
  using Unit = SQLWCHAR;
  static constexpr SQLSMALLINT kDataType = SQL_C_WCHAR;

  static std::vector<Unit> Encode(std::u16string_view text) { return ToWide(text); }
  static std::u16string Decode(const std::vector<Unit>& units) {
    return {units.begin(), units.end()};
  }
  template <class... Arguments>
  static SQLRETURN Connect(Arguments... arguments) {
    return SQLDriverConnectW(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN Execute(Arguments... arguments) {
    return SQLExecDirectW(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN DescribeColumn(Arguments... arguments) {
    return SQLDescribeColW(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN ColumnAttribute(Arguments... arguments) {
    return SQLColAttributeW(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN Diagnose(Arguments... arguments) {
    return SQLGetDiagRecW(arguments...);
  }
};

struct Utf8Calls {
  using Unit = SQLCHAR;
  static constexpr SQLSMALLINT kDataType = SQL_C_CHAR;

  static std::vector<Unit> Encode(std::u16string_view text) {
    const std::string utf8 = automation::ToUtf8(text);
    std::vector<Unit> units(utf8.begin(), utf8.end());
    units.push_back(0);
    return units;
  }
  static std::u16string Decode(const std::vector<Unit>& units) {
    return automation::FromUtf8(std::string(units.begin(), units.end()));
  }
  template <class... Arguments>
  static SQLRETURN Connect(Arguments... arguments) {
    return SQLDriverConnect(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN Execute(Arguments... arguments) {
    return SQLExecDirect(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN DescribeColumn(Arguments... arguments) {
    return SQLDescribeCol(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN ColumnAttribute(Arguments... arguments) {
    return SQLColAttribute(arguments...);
  }
  template <class... Arguments>
  static SQLRETURN Diagnose(Arguments... arguments) {
    return SQLGetDiagRec(arguments...);
  }
};

// Calls `action` with the calls of that form.
template <class Action>
decltype(auto) WithCalls(TextCalls calls, Action&& action) {
  return calls == TextCalls::Utf8 ? std::forward<Action>(action)(Utf8Calls())
                                  : std::forward<Action>(action)(WideCalls());
}

}  // namespace odbc
