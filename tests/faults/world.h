// A clinic's computer for one run: host database, registrations, exchange directory, the component
// on top, every port behind a fault plan.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "fakes/ports.h"
#include "faults/faulty_ports.h"
#include "host/b_vilnor.h"
#include "native/odbc_database.h"

namespace faults {

// Everything that must be whole after a fault: the rows that the component writes.
struct Rows {
  std::vector<std::u16string> links;
  std::vector<std::u16string> journal;
  std::vector<std::u16string> users;
  bool operator==(const Rows&) const = default;
};

class CountingEvents : public exchange::Events {
 public:
  void UpdateJournal() override { ++count; }
  int count = 0;
};

class World : private fakes::Ports {
 public:
  World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;
  ~World();

  // Read over its own connection.
  Rows ReadRows() const;
  // Links without their own journal line, or journal lines without their link.
  std::vector<std::u16string> LooseEnds() const;

  // Runs a statement over its own connection.
  void Execute(const std::u16string& statement) const { OwnConnection()->Execute(statement, -1); }

  void Put(const std::string& name, const std::string& bytes) const;
  // "" for a missing file.
  std::string Contents(const std::string& name) const;
  // Whether a result with these bytes exists under the name, or set aside.
  bool Waits(const std::string& name, const std::string& bytes) const;
  // Names in the exchange directory, sorted.
  std::vector<std::string> ExchangeFiles() const;

  FaultPlan plan;
  CountingEvents events;
  using Ports::dialogs;
  using Ports::processes;
  using Ports::registry;
  using Ports::trace;

  void RegisterLinkProgram();
  // The link program is not registered; the host's setting names its path.
  void UseSettingInsteadOfRegistration(const std::u16string& path);
  // A program in the host's own folder.
  std::u16string PutProgram(const std::string& name) const;

  host::BVilnor& vilnor() { return *vilnor_; }
  std::u16string exchangeDirectory() const;

 private:
  // Without faults.
  std::unique_ptr<platform::Connection> OwnConnection() const;

  std::filesystem::path folder_;
  native::OdbcDatabase odbc_;
  FaultyProcesses faultyProcesses_{plan, processes};
  FaultyFiles faultyFiles_{plan, files};
  FaultySettings faultySettings_{plan, userSettings};
  FaultyRegistry faultyRegistry_{plan, registry};
  FaultyDatabase faultyDatabase_{plan, odbc_};
  FaultyDocuments faultyDocuments_{plan, documents};
  platform::Platform faulty_ = fakes::With(ports, faultyProcesses_, faultyFiles_, faultySettings_,
                                           faultyRegistry_, faultyDatabase_, faultyDocuments_);
  std::unique_ptr<host::BVilnor> vilnor_;
};

}  // namespace faults
