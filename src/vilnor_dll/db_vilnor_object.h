// The automation class Vilnor.DBVilnor: the host's direct access to link records and lookups.
#pragma once

#include "db/db_vilnor.h"
#include "vilnor_dll/vilnor_object.h"

namespace vilnor_dll {

class DBVilnorObject : public VilnorObject<_DBVilnor> {
 public:
  // Opens the thread's shared connection. An exception reaches the host as the failed creation's
  // error.
  DBVilnorObject();

  HRESULT STDMETHODCALLTYPE InitConnection() override;
  HRESULT STDMETHODCALLTYPE DeleteFHP(long* fhpId) override;
  HRESULT STDMETHODCALLTYPE DeleteCase(BSTR* caseId) override;
  HRESULT STDMETHODCALLTYPE GetCaseIdByVilnorId(long* vilnorId, BSTR* result) override;
  HRESULT STDMETHODCALLTYPE CaseExists(long* fhpId, long* caseTypeId,
                                       VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE CaseExistsPID(long* pid, long* caseTypeId, BSTR* caseId,
                                          VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE GetFHPById(long* fhpId, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetVilnorIdByFHPId(long* fhpId, long* result) override;
  HRESULT STDMETHODCALLTYPE GetBIDById(long* bid, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetRIDById(long* rid, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetPIDById(long* pid, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetCityByPostnr(long* postnr, BSTR* result) override;
  HRESULT STDMETHODCALLTYPE PreRequestCostExists(long* fhpId, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE GetPreRequestCostByFHPid(long* fhpId, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE AddNewCase(long* pid, long* bid, long* rid, BSTR* caseId, long* fhpId,
                                       long* caseTypeId, long* statusCode, BSTR* vilnorUser,
                                       BSTR* kestraCaseId) override;
  HRESULT STDMETHODCALLTYPE UpdateCaseById(long* vilnorId, BSTR* caseId, long* caseStatus) override;
  HRESULT STDMETHODCALLTYPE UpdateCase(BSTR* caseId, long* kestraId, long* caseStatus,
                                       long* caseTypeId) override;
  HRESULT STDMETHODCALLTYPE GetPatientByPID(long* pid, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE GetPatientSSNByPID(long* pid, IDispatch** result) override;
  HRESULT STDMETHODCALLTYPE AddNewVilnorUser(long* pid, BSTR* userName) override;
  HRESULT STDMETHODCALLTYPE UpdateVilnorUser(long* pid, BSTR* userName) override;
  HRESULT STDMETHODCALLTYPE DeleteVilnorUser(long* pid) override;
  HRESULT STDMETHODCALLTYPE GetVilnorUserByPID(long* pid, BSTR* result) override;
  HRESULT STDMETHODCALLTYPE GetVilnorUserByCode1(long* code1, BSTR* result) override;

 private:
  db::DBVilnor core_;
};

}  // namespace vilnor_dll
