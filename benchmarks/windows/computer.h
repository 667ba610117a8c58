// A clinic's computer in Wine: the real ports, except that the link program is not started and
// nobody has to answer message boxes.
#pragma once

#include <filesystem>
#include <string>

#include "fakes/fakes.h"
#include "host/b_vilnor.h"
#include "windows/system_platform.h"

namespace benchmarks {

// The sample application with forty estimate rows, and the patient of the new cases.
inline constexpr std::int32_t kFullApplication = 1017;
inline constexpr std::int32_t kPatient = 4711;

// The current time, as in statements for the practice.
std::u16string NowLiteral();

class Computer {
 public:
  // `database` is the practice's SQLite file; a copy of it is used.
  explicit Computer(const std::filesystem::path& database);
  Computer(const Computer&) = delete;
  Computer& operator=(const Computer&) = delete;
  ~Computer();

  host::BVilnor& vilnor() { return *vilnor_; }
  const std::u16string& connectionString() const { return connectionString_; }
  std::filesystem::path exchangeFolder() const { return folder_ / L"Vilnor"; }
  void Run(const std::u16string& statement) const;
  // The single value that the query returns, as text.
  std::u16string Ask(const std::u16string& query) const;
  // Ends the program if the component has shown any message.
  void MustBeQuiet() const;

 private:
  class NoEvents : public exchange::Events {
   public:
    void UpdateJournal() override {}
  };

  // Records nothing, so that all memory used is the component's.
  class NoLinkProgram : public platform::Processes {
   public:
    void Start(const std::u16string& /*commandLine*/) override {}
  };

  std::filesystem::path folder_;
  std::u16string connectionString_;
  windows::SystemPlatform system_;
  fakes::Dialogs dialogs_;
  NoLinkProgram processes_;
  platform::Platform ports_;
  NoEvents events_;
  std::unique_ptr<host::BVilnor> vilnor_;
  std::unique_ptr<platform::Connection> beside_;
};

}  // namespace benchmarks
