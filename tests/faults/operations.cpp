#include "faults/operations.h"

#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "util/session_settings.h"

namespace faults {
namespace {

constexpr const char* kOlderRequest = "<an older request/>";

// A result file of the link program.
std::string Result(const std::string& status, const std::string& userDefData,
                   const std::string& caseId, const std::string& cancelled = "") {
  return "<?xml version='1.0' encoding='ISO-8859-1'?><Envelope><Result>" +
         (cancelled.empty() ? "" : "<Cancelled>" + cancelled + "</Cancelled>") + "<Status>" +
         status + "</Status><Id>" + caseId + "</Id><UserName>k\xE5re</UserName><UserDefData>" +
         userDefData + "</UserDefData></Result></Envelope>";
}

Operation Procedure(std::string name, std::function<void(World&)> run) {
  return {std::move(name), [](World&) {},
          [run = std::move(run)](World& world) {
            run(world);
            return true;
          },
          "", ""};
}

Operation Function(std::string name, std::function<bool(World&)> run) {
  return {std::move(name), [](World&) {}, std::move(run), "", ""};
}

// Replaces an older request file.
Operation Request(std::string name, std::string file, std::function<void(World&)> run) {
  Operation operation = Procedure(std::move(name), std::move(run));
  operation.prepare = [file](World& world) { world.Put(file, kOlderRequest); };
  operation.requestFile = std::move(file);
  return operation;
}

// Reads a result file.
Operation Reader(std::string name, std::string file, std::string bytes,
                 std::function<void(World&)> run) {
  Operation operation = Procedure(std::move(name), std::move(run));
  operation.prepare = [file, bytes = std::move(bytes)](World& world) { world.Put(file, bytes); };
  operation.resultFile = std::move(file);
  return operation;
}

// An operation of the host's own DBVilnor. The host handles a failed creation.
Operation OnDatabase(std::string name, std::function<bool(db::DBVilnor&)> run) {
  return Function("DBVilnor." + std::move(name), [run = std::move(run)](World&) {
    try {
      db::DBVilnor database;
      return run(database);
    } catch (const automation::AutomationError&) {
      return true;
    }
  });
}

Operation CommandOnDatabase(std::string name, std::function<void(db::DBVilnor&)> run) {
  return OnDatabase(std::move(name), [run = std::move(run)](db::DBVilnor& database) {
    run(database);
    return true;
  });
}

void AddHostOperations(std::vector<Operation>& all) {
  all.push_back(Procedure("InitVilnor", [](World& world) {
    world.vilnor().InitVilnor(util::CurrentSettings().gConnectionParameter, 1, 1);
  }));
  all.push_back(Request("OpenExistCase", "InExistCase102.xml",
                        [](World& world) { world.vilnor().OpenExistCase(102); }));
  all.push_back(Request("OpenExistFHP", "InExistCase101.xml",
                        [](World& world) { world.vilnor().OpenExistFHP(71); }));
  all.push_back(Request("OpenSearchPatient", "Search19850312-1234.xml",
                        [](World& world) { world.vilnor().OpenSearchPatient(4711); }));
  all.push_back(Request("OpenWithNewCase", "InNewCase4711.xml",
                        [](World& world) { world.vilnor().OpenWithNewCase(4711, 12, 3); }));
  for (const std::int32_t application : {77, 78}) {
    all.push_back(Request(
        "OpenWithNewFHP " + std::to_string(application),
        "InNewFHP" + std::to_string(application) + ".xml",
        [application](World& world) { world.vilnor().OpenWithNewFHP(4711, 12, 3, application); }));
  }
  all.push_back(Procedure("OpenVilnor", [](World& world) { world.vilnor().OpenVilnor(); }));
  Operation bySetting = all.back();
  bySetting.name = "OpenVilnor from the setting";
  bySetting.prepare = [](World& world) {
    world.UseSettingInsteadOfRegistration(world.PutProgram("Link.exe"));
  };
  all.push_back(bySetting);
  Operation byStaleSetting = bySetting;
  byStaleSetting.name = "OpenVilnor, stale setting";
  byStaleSetting.prepare = [](World& world) {
    world.UseSettingInsteadOfRegistration(u"C:\\Gone.exe");
  };
  byStaleSetting.tellsOfMissingProgram = true;
  all.push_back(byStaleSetting);
  all.push_back(Function("FHPExists", [](World& world) { return !world.vilnor().FHPExists(71); }));
  all.push_back(Request("WriteNewCase", "InNewCase1.xml", [](World& world) {
    world.vilnor().WriteNewCase(1, 2, 3, u"s", u"Åsa", u"b", world.exchangeDirectory());
  }));
  all.push_back(Procedure("AddNewVilnorUser",
                          [](World& world) { world.vilnor().AddNewVilnorUser(4711, u"'ny'"); }));
  all.push_back(Procedure("UpdateVilnorUser",
                          [](World& world) { world.vilnor().UpdateVilnorUser(5012, u"'annan'"); }));
  all.push_back(
      Procedure("DeleteVilnorUser", [](World& world) { world.vilnor().DeleteVilnorUser(5012); }));
  all.push_back(Function("GetVilnorUserByPID", [](World& world) {
    return world.vilnor().GetVilnorUserByPID(5012).empty();
  }));
  all.push_back(Function("OKToSend", [](World& world) {
    std::int16_t code = -1;
    std::u16string message = u"host's";
    return !world.vilnor().OKToSend(77, code, message);
  }));
}

// The requests that get an answer, each while an earlier answer is still unread.
void AddRequestsOverUnreadResults(std::vector<Operation>& all) {
  struct Answered {
    std::string request;
    std::string unread;
  };
  const std::vector<Answered> requests = {{"OpenExistCase", "OutExistCase102.xml"},
                                          {"OpenWithNewCase", "OutNewCase4711.xml"},
                                          {"OpenWithNewFHP 77", "OutNewFHP77.xml"}};
  for (const Answered& answered : requests) {
    const auto request = std::find_if(
        all.begin(), all.end(), [&](const auto& each) { return each.name == answered.request; });
    Operation operation = *request;
    operation.name += ", unread result";
    operation.unreadFile = answered.unread;
    operation.prepare = [prepare = request->prepare, unread = answered.unread](World& world) {
      prepare(world);
      world.Put(unread, Result("5", "", "unread"));
    };
    all.push_back(operation);
  }
}

void AddReaders(std::vector<Operation>& all) {
  const auto newCase = [](World& world) { world.vilnor().ReadNewCase(4711); };
  const auto newFhp = [](World& world) { world.vilnor().ReadNewFHP(77); };
  const auto exist = [](World& world) { world.vilnor().ReadExistCase(102); };
  all.push_back(Reader("ReadNewCase sent", "OutNewCase4711.xml",
                       Result("5", "4711&amp;12&amp;3", "9001"), newCase));
  all.push_back(Reader("ReadNewCase cancelled", "OutNewCase4711.xml",
                       Result("5", "4711&amp;12&amp;3", "9001", "1"), newCase));
  all.push_back(Reader("ReadNewCase withdrawn", "OutNewCase4712.xml",
                       Result("7", "4712&amp;12&amp;3", "2072"),
                       [](World& world) { world.vilnor().ReadNewCase(4712); }));
  all.push_back(Reader("ReadNewCase changed", "OutNewCase4712.xml",
                       Result("1", "4712&amp;12&amp;3", "2099"),
                       [](World& world) { world.vilnor().ReadNewCase(4712); }));
  all.push_back(Reader("ReadNewFHP sent", "OutNewFHP77.xml",
                       Result("5", "4711&amp;12&amp;3&amp;77&amp;2026-077", "9002"), newFhp));
  all.push_back(Reader("ReadNewFHP withdrawn", "OutNewFHP71.xml",
                       Result("7", "4712&amp;12&amp;3&amp;71&amp;2026-071", "2071"),
                       [](World& world) { world.vilnor().ReadNewFHP(71); }));
  all.push_back(
      Reader("ReadNewFHP cancelled", "OutNewFHP77.xml", Result("5", "", "9002", "1"), newFhp));
  Operation changed = Reader("ReadNewFHP changed", "OutNewFHP71.xml",
                             Result("1", "4712&amp;12&amp;3&amp;71&amp;2026-071", "2099"),
                             [](World& world) { world.vilnor().ReadNewFHP(71); });
  changed.prepare = [prepare = changed.prepare](World& world) {
    prepare(world);
    // Only a text with this mark can be changed.
    world.Execute(u"UPDATE Journal SET Tekst = Tekst || '!' WHERE ID = 501");
  };
  all.push_back(changed);
  all.push_back(
      Reader("ReadExistCase cancelled", "OutExistCase102.xml", Result("", "", "", "0"), exist));
  all.push_back(
      Reader("ReadExistCase changed", "OutExistCase102.xml", Result("1", "2072", "2099"), exist));
  all.push_back(
      Reader("ReadExistCase withdrawn", "OutExistCase102.xml", Result("7", "2072", "2072"), exist));
  Operation deleted =
      Reader("ReadExistCase deleted, Yes", "OutExistCase102.xml", Result("", "", "", "3"), exist);
  const auto prepare = deleted.prepare;
  deleted.prepare = [prepare](World& world) {
    prepare(world);
    world.dialogs.answers = {platform::Answer::Yes};
  };
  all.push_back(deleted);
}

void AddDatabaseCommands(std::vector<Operation>& all) {
  all.push_back(CommandOnDatabase("DeleteFHP", [](auto& db) { db.DeleteFHP(71); }));
  all.push_back(CommandOnDatabase("DeleteCase", [](auto& db) { db.DeleteCase(u"2072"); }));
  all.push_back(CommandOnDatabase("AddNewCase 1", [](auto& db) {
    db.AddNewCase(4711, 12, 3, u"9003", 77, 1, 5, u"kåre", u"2026-077");
  }));
  all.push_back(CommandOnDatabase("AddNewCase 9", [](auto& db) {
    db.AddNewCase(4711, 12, 3, u"9003", 4711, 9, 5, u"kåre", u"");
  }));
  all.push_back(
      CommandOnDatabase("UpdateCaseById", [](auto& db) { db.UpdateCaseById(102, u"2099", 1); }));
  all.push_back(
      CommandOnDatabase("UpdateCase", [](auto& db) { db.UpdateCase(u"2099", 4712, 1, 9); }));
  all.push_back(
      CommandOnDatabase("AddNewVilnorUser", [](auto& db) { db.AddNewVilnorUser(4711, u"'ny'"); }));
  all.push_back(CommandOnDatabase("UpdateVilnorUser",
                                  [](auto& db) { db.UpdateVilnorUser(5012, u"'annan'"); }));
  all.push_back(CommandOnDatabase("DeleteVilnorUser", [](auto& db) { db.DeleteVilnorUser(5012); }));
}

void AddDatabaseLookups(std::vector<Operation>& all) {
  all.push_back(OnDatabase("GetCaseIdByVilnorId",
                           [](auto& db) { return db.GetCaseIdByVilnorId(102).empty(); }));
  all.push_back(OnDatabase("CaseExists", [](auto& db) { return !db.CaseExists(71, 1); }));
  all.push_back(
      OnDatabase("CaseExistsPID", [](auto& db) { return !db.CaseExistsPID(4712, 9, u"2072"); }));
  all.push_back(OnDatabase("GetFHPById", [](auto& db) { return !db.GetFHPById(77); }));
  all.push_back(
      OnDatabase("GetVilnorIdByFHPId", [](auto& db) { return db.GetVilnorIdByFHPId(71) == 0; }));
  all.push_back(OnDatabase("GetBIDById", [](auto& db) { return !db.GetBIDById(12); }));
  all.push_back(OnDatabase("GetRIDById", [](auto& db) { return !db.GetRIDById(3); }));
  all.push_back(OnDatabase("GetPIDById", [](auto& db) { return !db.GetPIDById(4711); }));
  all.push_back(
      OnDatabase("GetCityByPostnr", [](auto& db) { return db.GetCityByPostnr(41301).empty(); }));
  all.push_back(
      OnDatabase("PreRequestCostExists", [](auto& db) { return !db.PreRequestCostExists(78); }));
  all.push_back(OnDatabase("GetPreRequestCostByFHPid",
                           [](auto& db) { return !db.GetPreRequestCostByFHPid(78); }));
  all.push_back(OnDatabase("GetPatientByPID", [](auto& db) { return !db.GetPatientByPID(4711); }));
  all.push_back(
      OnDatabase("GetPatientSSNByPID", [](auto& db) { return !db.GetPatientSSNByPID(4711); }));
  all.push_back(OnDatabase("GetVilnorUserByPID",
                           [](auto& db) { return db.GetVilnorUserByPID(5012).empty(); }));
  all.push_back(OnDatabase("GetVilnorUserByCode1",
                           [](auto& db) { return db.GetVilnorUserByCode1(-32000).empty(); }));
}

}  // namespace

std::vector<Operation> EveryOperation() {
  std::vector<Operation> all;
  AddHostOperations(all);
  AddRequestsOverUnreadResults(all);
  AddReaders(all);
  AddDatabaseCommands(all);
  AddDatabaseLookups(all);
  return all;
}

}  // namespace faults
