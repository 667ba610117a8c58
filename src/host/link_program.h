// Finds the link program and the exchange directory, and starts the program.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "util/attempt.h"

namespace host {

// Keys of the local machine, below each of which a program registers its folder as "Path".
inline constexpr std::u16string_view kLinkRegistration =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe";
// Those under which the host may have registered itself; the first that has a path is used.
inline constexpr auto kHostRegistrations = std::to_array<std::u16string_view>(
    {u"SOFTWARE\\Kestra\\Kestra.Main.exe",
     u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra.Main.exe",
     u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra32.exe"});
inline constexpr std::u16string_view kRegisteredValue = u"Path";

// "" for a missing value. The registry class creates a missing key, or raises an error if it may
// not.
std::u16string RegisteredPath(std::u16string_view keyPath);

// Full path of Link.exe; nothing if it cannot be found, which the user has then been told. A stale
// per-user setting is cleared but still returned: the start then fails with its own message.
std::optional<std::u16string> GetVilnorCommandLine();

// The exchange directory, without a trailing backslash. Created if missing.
util::Attempt<std::u16string> GetVilnorOutputPath();

// Starts the link program on a request file, or without arguments when `requestPath` is empty.
void StartVilnor(const std::u16string& exePath, const std::u16string& requestPath);

// Stores the per-user setting that names Link.exe.
void SetVilnorPath(const std::u16string& path);

}  // namespace host
