// Operations that the database refuses, and the state that they leave.
#pragma once

#include <string>
#include <vector>

#include "databases/clinic.h"

namespace databases {

using Texts = std::vector<std::u16string>;

class BadInput : public Clinic {
 protected:
  // Each operation has a new object, as in BVilnor.
  template <class Operation>
  auto Fresh(Operation operation) {
    const db::DBVilnor* const gDB = db::RenewGDB().get();
    EXPECT_NE(gDB, nullptr);
    auto result = operation(*db::GDB());
    db::ReleaseGDB();
    return result;
  }
  template <class Operation>
  void RunFresh(Operation operation) {
    operation(*db::RenewGDB());
    db::ReleaseGDB();
  }
  // An operation that changes nothing, since the database refuses it.
  template <class Operation>
  void ExpectRefused(const std::u16string& procedure, Operation operation) {
    const auto before = Written();
    RunFresh(operation);
    ExpectProvidersBox(procedure);
    EXPECT_EQ(Written(), before);
    dialogs.shown.clear();
  }
  void Add(const std::u16string& caseId, const std::u16string& user,
           const std::u16string& kestraCaseId = u"K-9") {
    RunFresh([&](auto& operations) {
      operations.AddNewCase(4711, 12, 3, caseId, 77, 1, 5, user, kestraCaseId);
    });
  }
  std::u16string UserOf(std::int32_t pid) {
    return Fresh([&](auto& operations) { return operations.GetVilnorUserByPID(pid); });
  }
  void ExpectThatANewCaseWorks() {
    dialogs.shown.clear();
    Add(u"VL-9", u"åsa");
    EXPECT_EQ(Boxes(), Texts());
    EXPECT_EQ(Rows(u"CaseId", u"Vilnor WHERE PID = 4711"), Texts{u"VL-9"});
  }
};

}  // namespace databases
