// A host and a link program on this machine, registered as the component expects.
#pragma once

#include <filesystem>
#include <string>

namespace system_tests {

// While it lives: a folder with an exchange directory, the host's registration, and as Link.exe a
// stand-in that records its command line and ends. The registry values and the folder are removed
// with the object.
class HostRegistration {
 public:
  HostRegistration();
  HostRegistration(const HostRegistration&) = delete;
  HostRegistration& operator=(const HostRegistration&) = delete;
  ~HostRegistration();

  std::filesystem::path ExchangeFolder() const { return folder_ / L"Vilnor"; }
  std::filesystem::path LinkProgram() const { return folder_ / L"Link.exe"; }
  // Waits for the next start of Link.exe; its command line, "" when it was not started.
  std::wstring TakeCommandLine() const;

 private:
  std::filesystem::path folder_;
};

// Whether this process is that stand-in, which has then done its work.
bool RanAsLinkProgram();

}  // namespace system_tests
