// The command line that the component starts the link program with:
//   C:\Link\Link.exe path="C:\...\InNewCase4711.xml" version=2 caller=KestraDental removefiles=1
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct CommandLine {
  // Full path of the request file; empty if the program was started without one.
  std::u16string requestPath;
  std::u16string version;
  std::u16string caller;
  // The link program must remove the request file.
  bool removeFiles = false;
  // "/?", "-h" or "--help" was asked for.
  bool help = false;
  // The errors found, one sentence each (Swedish); empty for a valid command line.
  std::vector<std::u16string> problems;
};

// Takes the whole command line, which begins with the program's path. That path may contain blanks
// and still be unquoted, as the component writes it; it is then recognised by `programPath`, the
// running program's full path. Keys are case-insensitive. A value may be in double quotes, within
// which nothing is special.
CommandLine ParseCommandLine(std::u16string_view commandLine, std::u16string_view programPath);

}  // namespace simulator
