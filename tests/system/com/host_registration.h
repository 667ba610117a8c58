// A host and a link program on this machine, as the component finds them in the registry.
#pragma once

#include <filesystem>
#include <string>

namespace system_tests {

// While it lives: a folder of its own with an exchange directory, the host registered there, and as
// Link.exe a stand-in that notes the command line it was started with and ends. The registry's
// values and the folder go with the object.
class HostRegistration {
 public:
  HostRegistration();
  HostRegistration(const HostRegistration&) = delete;
  HostRegistration& operator=(const HostRegistration&) = delete;
  ~HostRegistration();

  std::filesystem::path ExchangeFolder() const { return folder_ / L"Vilnor"; }
  std::filesystem::path LinkProgram() const { return folder_ / L"Link.exe"; }
  // Waits for the next start of Link.exe; its command line, "" when none came.
  std::wstring TakeCommandLine() const;

 private:
  std::filesystem::path folder_;
};

// Whether this process is the stand-in, which has then done its work.
bool RanAsLinkProgram();

}  // namespace system_tests
