// The automation class Vilnor.BVilnor: the host's session, with its events.
#pragma once

#include "com/connection_point.h"
#include "com/dual_object.h"
#include "exchange/events.h"
#include "host/b_vilnor.h"

namespace com {

class BVilnorObject : public DualObject<_BVilnor, IConnectionPointContainer>,
                      private exchange::Events {
 public:
  BVilnorObject();

  HRESULT STDMETHODCALLTYPE InitVilnor(BSTR* connectionParameter, short* kestraLangId,
                                       short* dbType) override;
  HRESULT STDMETHODCALLTYPE OpenExistCase(long* vilnorId) override;
  HRESULT STDMETHODCALLTYPE OpenExistFHP(long* fhpId) override;
  HRESULT STDMETHODCALLTYPE OpenSearchPatient(long* pid) override;
  HRESULT STDMETHODCALLTYPE OpenWithNewCase(long* pid, long* bid, long* rid) override;
  HRESULT STDMETHODCALLTYPE OpenWithNewFHP(long* pid, long* bid, long* rid, long* fhpId) override;
  HRESULT STDMETHODCALLTYPE OpenVilnor() override;
  HRESULT STDMETHODCALLTYPE ReadNewFHP(long* fhpId) override;
  HRESULT STDMETHODCALLTYPE ReadExistCase(long* vilnorId) override;
  HRESULT STDMETHODCALLTYPE FHPExists(long* fhpId, VARIANT_BOOL* result) override;
  HRESULT STDMETHODCALLTYPE WriteNewCase(long* pid, long* bid, long* rid, BSTR* ssn,
                                         BSTR* firstName, BSTR* lastName, BSTR vilnorOutputPath,
                                         BSTR* result) override;
  HRESULT STDMETHODCALLTYPE ReadNewCase(long* pid) override;
  HRESULT STDMETHODCALLTYPE AddNewVilnorUser(long* pid, BSTR* userName) override;
  HRESULT STDMETHODCALLTYPE UpdateVilnorUser(long* pid, BSTR* userName) override;
  HRESULT STDMETHODCALLTYPE DeleteVilnorUser(long* pid) override;
  HRESULT STDMETHODCALLTYPE GetVilnorUserByPID(long* pid, BSTR* result) override;
  HRESULT STDMETHODCALLTYPE OKToSend(long* fhpId, short* errCode, BSTR* errMsg,
                                     VARIANT_BOOL* result) override;

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID interfaceId,
                                                IConnectionPoint** point) override;

 private:
  void UpdateJournal() override;

  ConnectionPoint events_;
  host::BVilnor core_;
};

}  // namespace com
