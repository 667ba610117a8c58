#include "com/db_vilnor_object.h"

namespace com {

DBVilnorObject::DBVilnorObject() : DualObject(CLSID_DBVilnor, IID_NULL) {}

HRESULT DBVilnorObject::InitConnection() {
  return Call([&] { core_.InitConnection(); });
}

HRESULT DBVilnorObject::DeleteFHP(long* fhpId) {
  return Call([&] { core_.DeleteFHP(In(fhpId)); });
}

HRESULT DBVilnorObject::DeleteCase(BSTR* caseId) {
  return Call([&] { core_.DeleteCase(In(caseId)); });
}

HRESULT DBVilnorObject::GetCaseIdByVilnorId(long* vilnorId, BSTR* result) {
  return CallFor(result, [&] { return core_.GetCaseIdByVilnorId(In(vilnorId)); });
}

HRESULT DBVilnorObject::CaseExists(long* fhpId, long* caseTypeId, VARIANT_BOOL* result) {
  return CallFor(result, [&] { return core_.CaseExists(In(fhpId), In(caseTypeId)); });
}

HRESULT DBVilnorObject::CaseExistsPID(long* pid, long* caseTypeId, BSTR* caseId,
                                      VARIANT_BOOL* result) {
  return CallFor(result, [&] { return core_.CaseExistsPID(In(pid), In(caseTypeId), In(caseId)); });
}

HRESULT DBVilnorObject::GetFHPById(long* fhpId, IDispatch** result) {
  return CallFor(result, [&] { return core_.GetFHPById(In(fhpId)); });
}

HRESULT DBVilnorObject::GetVilnorIdByFHPId(long* fhpId, long* result) {
  return CallFor(result, [&] { return core_.GetVilnorIdByFHPId(In(fhpId)); });
}

HRESULT DBVilnorObject::GetBIDById(long* bid, IDispatch** result) {
  return CallFor(result, [&] { return core_.GetBIDById(In(bid)); });
}

HRESULT DBVilnorObject::GetRIDById(long* rid, IDispatch** result) {
  return CallFor(result, [&] { return core_.GetRIDById(In(rid)); });
}

HRESULT DBVilnorObject::GetPIDById(long* pid, IDispatch** result) {
  return CallFor(result, [&] { return core_.GetPIDById(In(pid)); });
}

HRESULT DBVilnorObject::GetCityByPostnr(long* postnr, BSTR* result) {
  return CallFor(result, [&] { return core_.GetCityByPostnr(In(postnr)); });
}

HRESULT DBVilnorObject::PreRequestCostExists(long* fhpId, VARIANT_BOOL* result) {
  return CallFor(result, [&] { return core_.PreRequestCostExists(In(fhpId)); });
}

HRESULT DBVilnorObject::GetPreRequestCostByFHPid(long* fhpId, IDispatch** result) {
  return CallFor(result, [&] { return core_.GetPreRequestCostByFHPid(In(fhpId)); });
}

HRESULT DBVilnorObject::AddNewCase(long* pid, long* bid, long* rid, BSTR* caseId, long* fhpId,
                                   long* caseTypeId, long* statusCode, BSTR* vilnorUser,
                                   BSTR* kestraCaseId) {
  return Call([&] {
    core_.AddNewCase(In(pid), In(bid), In(rid), In(caseId), In(fhpId), In(caseTypeId),
                     In(statusCode), In(vilnorUser), InOptional(kestraCaseId));
  });
}

HRESULT DBVilnorObject::UpdateCaseById(long* vilnorId, BSTR* caseId, long* caseStatus) {
  return Call([&] { core_.UpdateCaseById(In(vilnorId), In(caseId), In(caseStatus)); });
}

HRESULT DBVilnorObject::UpdateCase(BSTR* caseId, long* kestraId, long* caseStatus,
                                   long* caseTypeId) {
  return Call([&] { core_.UpdateCase(In(caseId), In(kestraId), In(caseStatus), In(caseTypeId)); });
}

HRESULT DBVilnorObject::GetPatientByPID(long* pid, IDispatch** result) {
  return CallFor(result, [&] { return core_.GetPatientByPID(In(pid)); });
}

HRESULT DBVilnorObject::GetPatientSSNByPID(long* pid, IDispatch** result) {
  return CallFor(result, [&] { return core_.GetPatientSSNByPID(In(pid)); });
}

HRESULT DBVilnorObject::AddNewVilnorUser(long* pid, BSTR* userName) {
  return Call([&] { core_.AddNewVilnorUser(In(pid), In(userName)); });
}

HRESULT DBVilnorObject::UpdateVilnorUser(long* pid, BSTR* userName) {
  return Call([&] { core_.UpdateVilnorUser(In(pid), In(userName)); });
}

HRESULT DBVilnorObject::DeleteVilnorUser(long* pid) {
  return Call([&] { core_.DeleteVilnorUser(In(pid)); });
}

HRESULT DBVilnorObject::GetVilnorUserByPID(long* pid, BSTR* result) {
  return CallFor(result, [&] { return core_.GetVilnorUserByPID(In(pid)); });
}

HRESULT DBVilnorObject::GetVilnorUserByCode1(long* code1, BSTR* result) {
  return CallFor(result, [&] { return core_.GetVilnorUserByCode1(In(code1)); });
}

}  // namespace com
