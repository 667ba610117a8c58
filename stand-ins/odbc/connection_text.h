// Splits a connection string "key=value;key={value};…" into its parts and rebuilds it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/dialect.h"

namespace odbc {

class ConnectionText {
 public:
  // Blanks around keys and values are dropped; a value in braces keeps everything inside them. A
  // piece without "=" is kept as it stands.
  explicit ConnectionText(std::u16string_view text);

  // The value of a key, ignoring the key's letter case; without braces.
  std::optional<std::u16string> Find(std::u16string_view key) const;
  // Replaces the key's value, or appends a new pair.
  void Set(std::u16string_view key, std::u16string_view value);
  void Remove(std::u16string_view key);
  // Values are put in braces where needed.
  std::u16string Text() const;

 private:
  struct Pair {
    std::u16string key;
    std::u16string value;
    bool hasValue = true;
    bool braced = false;
  };
  std::vector<Pair>::iterator Locate(std::u16string_view key);

  std::vector<Pair> pairs_;
};

// What is passed to the ODBC driver manager.
struct ConnectRequest {
  std::u16string text;
  // That of the driver that the string names; unknown if it names none (a DSN).
  const Dialect& dialect;
};

// A "Provider" for ODBC is removed from the string; any other raises ADO's 3706. `user` and
// `password` override the string unless they are empty. The dialect's defaults are added for the
// keys that the string lacks.
ConnectRequest RequestOf(std::u16string_view connectionString, std::u16string_view user,
                         std::u16string_view password);

}  // namespace odbc
