// The command line that the component starts the link program with:
//   C:\Link\Link.exe path="C:\...\InNewCase4711.xml" version=2 caller=KestraDental removefiles=1
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct CommandLine {
  // Full path of the request file; empty when the program was started without a request.
  std::u16string requestPath;
  std::u16string version;
  std::u16string caller;
  // The request file is the link program's to remove.
  bool removeFiles = false;
  // "/?", "-h" or "--help" was asked for.
  bool help = false;
  // What cannot be understood, a sentence each (Swedish); empty for a good command line.
  std::vector<std::u16string> problems;
};

// Takes the whole command line, the program's own path in front. That path may stand unquoted
// although it contains blanks, as the component writes it; `programPath` is the running program's
// full path, by which it is recognised then. Keys are read without regard to letter case, a value
// may stand in double quotes, within which nothing is special.
CommandLine ParseCommandLine(std::u16string_view commandLine, std::u16string_view programPath);

}  // namespace simulator
