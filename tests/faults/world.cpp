#include "faults/world.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

#include "automation/text.h"
#include "platform/conversions.h"
#include "platform/thread_state.h"
#include "util/session_settings.h"

namespace faults {
namespace {

namespace fs = std::filesystem;
using automation::FromUtf8;

// The host's database, created once.
const fs::path& TemplateDatabase() {
  static const fs::path path = [] {
    fs::path made =
        fs::temp_directory_path() / ("vilnor-faults-" + std::to_string(getpid()) + ".db");
    fs::remove(made);
    const std::string command = "python3 " VILNOR_SOURCE_DIR
                                "/tests/schema/make_schema.py --product sqlite | sqlite3 -bail " +
                                made.string();
    if (std::system(command.c_str()) != 0) {  // NOLINT(cert-env33-c): a test's own tools
      throw std::runtime_error("the host's database cannot be made");
    }
    return made;
  }();
  return path;
}

std::vector<std::u16string> Query(platform::Connection& connection, const std::u16string& statement,
                                  std::int32_t columns) {
  std::vector<std::u16string> lines;
  for (const auto rows = connection.Execute(statement, -1); !rows->Eof(); rows->MoveNext()) {
    std::u16string line;
    for (std::int32_t column = 0; column < columns; ++column) {
      const auto value = rows->Field(column);
      line += (value.IsNull() ? u"Null" : platform::ToText(value)) + u"|";
    }
    lines.push_back(line);
  }
  return lines;
}

constexpr const char16_t* kLinkRegistration =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe";

std::u16string ConnectionString(const fs::path& folder) {
  return u"Driver=SQLite3;Database=" + FromUtf8((folder / "kestra.db").string());
}

}  // namespace

World::World()
    : folder_(fs::temp_directory_path() / ("vilnor-faults-" + std::to_string(getpid()))) {
  fs::remove_all(folder_);
  fs::create_directories(folder_ / "Vilnor");
  fs::copy_file(TemplateDatabase(), folder_ / "kestra.db");
  const std::u16string home = FromUtf8(folder_.string()) + u"\\";
  registry.SetText(fakes::MemoryRegistry::kLocalMachine, u"SOFTWARE\\Kestra\\Kestra.Main.exe",
                   u"Path", home);
  RegisterLinkProgram();
  platform::Use(faulty_);
  vilnor_ = std::make_unique<host::BVilnor>(events);
  vilnor_->InitVilnor(ConnectionString(folder_), 1, 1);
  plan.Clear();
  trace.TurnOn();
}

World::~World() {
  plan.Clear();
  vilnor_.reset();
  platform::ForgetThreadState();
  fs::remove_all(folder_);
}

std::unique_ptr<platform::Connection> World::OwnConnection() const {
  auto connection = native::OdbcDatabase().NewConnection();
  connection->Open(ConnectionString(folder_), u"", u"", -1);
  return connection;
}

Rows World::ReadRows() const {
  const auto connection = OwnConnection();
  return {Query(*connection, u"SELECT * FROM Vilnor ORDER BY VilnorId", 11),
          Query(*connection, u"SELECT * FROM Journal ORDER BY ID", 10),
          Query(*connection, u"SELECT * FROM VilnorPasient ORDER BY PID", 2)};
}

std::vector<std::u16string> World::LooseEnds() const {
  const auto connection = OwnConnection();
  auto loose = Query(*connection,
                     u"SELECT VilnorId FROM Vilnor v WHERE NOT EXISTS (SELECT 1 FROM Journal j "
                     u"WHERE j.ID = v.Journal_ID AND j.RefTBID = v.VilnorId)",
                     1);
  const auto lines = Query(*connection,
                           u"SELECT ID FROM Journal j WHERE RefTBID <> 0 AND NOT EXISTS (SELECT 1 "
                           u"FROM Vilnor v WHERE v.VilnorId = j.RefTBID)",
                           1);
  loose.insert(loose.end(), lines.begin(), lines.end());
  return loose;
}

void World::Put(const std::string& name, const std::string& bytes) const {
  std::ofstream(folder_ / "Vilnor" / name, std::ios::binary) << bytes;
}

std::string World::Contents(const std::string& name) const {
  if (!fs::is_regular_file(folder_ / "Vilnor" / name)) {
    return {};
  }
  std::ifstream file(folder_ / "Vilnor" / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

bool World::Waits(const std::string& name, const std::string& bytes) const {
  const std::string stem = name.substr(0, name.size() - std::string_view(".xml").size());
  const auto names = ExchangeFiles();
  return std::any_of(names.begin(), names.end(), [&](const auto& file) {
    return (file == name || file.starts_with(stem + " ")) && Contents(file) == bytes;
  });
}

std::vector<std::string> World::ExchangeFiles() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder_ / "Vilnor")) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

void World::RegisterLinkProgram() {
  registry.SetText(fakes::MemoryRegistry::kLocalMachine, kLinkRegistration, u"Path", u"C:\\Link");
}

void World::UseSettingInsteadOfRegistration(const std::u16string& path) {
  registry.SetText(fakes::MemoryRegistry::kLocalMachine, kLinkRegistration, u"Path", u"");
  userSettings.Save(u"KESTRA", u"Environment", u"Vilnor", path);
}

std::u16string World::PutProgram(const std::string& name) const {
  std::ofstream(folder_ / name, std::ios::binary) << "MZ";
  return FromUtf8(folder_.string()) + u"\\" + FromUtf8(name);
}

std::u16string World::exchangeDirectory() const {
  return FromUtf8(folder_.string()) + u"\\Vilnor";
}

}  // namespace faults
