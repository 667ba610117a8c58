// DBVilnor's mapping of patients to Vilnor Link users, the table VilnorPasient.
#include "automation/text.h"
#include "db/query.h"

namespace db {
namespace {

using automation::Decimal10;
using util::kDBVilnorIcon;
using util::UnderTrap;

constexpr Lookup kGetVilnorUserByPID = {u" in GetVilnorUserByPID",
                                        u"SELECT UserName from VilnorPasient where PID = ", u"",
                                        OpenMode::Keyset};
constexpr Lookup kPatientByCode1 = {
    u" in GetVilnorUserByCode1", u"SELECT ID from Pasient where Code1 = ", u"", OpenMode::Keyset};

}  // namespace

// Kept: the user name is not quoted; hosts pass a value that the database accepts there.
void DBVilnor::AddNewVilnorUser(std::int32_t pid, const std::u16string& userName) {
  UnderTrap(u" in AddNewVilnorUser", kDBVilnorIcon, [&] {
    Execute(u"Insert into VilnorPasient (PID, UserName) VALUES (" + Decimal10(pid) + u"," +
            userName + u")");
  });
}

// Kept: a failure names AddNewVilnorUser, and the user name is not quoted here either.
void DBVilnor::UpdateVilnorUser(std::int32_t pid, const std::u16string& userName) {
  UnderTrap(u" in AddNewVilnorUser\0UpdateVilnorUser", kDBVilnorIcon, [&] {
    const bool mapped = !GetVilnorUserByPID(pid).empty();
    if (mapped && !userName.empty()) {
      Execute(u"Update VilnorPasient SET PID = " + Decimal10(pid) + u", UserName = " + userName +
              u" Where PID= " + Decimal10(pid));
    } else if (mapped) {
      DeleteVilnorUser(pid);
    } else if (!userName.empty()) {
      AddNewVilnorUser(pid, userName);
    }
  });
}

void DBVilnor::DeleteVilnorUser(std::int32_t pid) {
  UnderTrap(u" in DeleteVilnorUser", kDBVilnorIcon,
            [&] { Execute(u"Delete from VilnorPasient where PID = " + Decimal10(pid)); });
}

std::u16string DBVilnor::GetVilnorUserByPID(std::int32_t pid) {
  return LookUp(kGetVilnorUserByPID, pid, [](auto& user) { return TextField(user, u"UserName"); });
}

// Kept: if the first lookup finds nothing, the second runs for patient 0 and fails on the recordset
// that the first left open.
std::u16string DBVilnor::GetVilnorUserByCode1(std::int32_t code1) {
  return UnderTrap(kPatientByCode1.procedure, kDBVilnorIcon, [&] {
    const std::int32_t patientId =
        FirstRow(StatementOf(kPatientByCode1, code1), kPatientByCode1.mode,
                 [](auto& patient) { return NumberField(patient, u"ID"); });
    return GetVilnorUserByPID(patientId);
  });
}

}  // namespace db
