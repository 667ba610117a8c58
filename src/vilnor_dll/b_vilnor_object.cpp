#include "vilnor_dll/b_vilnor_object.h"

#include <vector>

#include "com/enumerator.h"

namespace vilnor_dll {
namespace {

using com::ComPtr;

// Dispatch ids of __BVilnor.
constexpr DISPID kUpdateJournal = 2;

struct ConnectionPoints {
  using Interface = IEnumConnectionPoints;
  using Item = IConnectionPoint*;
  using Stored = ComPtr<IConnectionPoint>;
  static IConnectionPoint* Give(Stored point) { return point.Detach(); }
};

}  // namespace

BVilnorObject::BVilnorObject()
    : VilnorObject(CLSID_BVilnor, DIID___BVilnor), events_(*this), core_(*this) {}

HRESULT BVilnorObject::InitVilnor(BSTR* connectionParameter, short* kestraLangId, short* dbType) {
  return Call([&] { core_.InitVilnor(In(connectionParameter), In(kestraLangId), In(dbType)); });
}

HRESULT BVilnorObject::OpenExistCase(long* vilnorId) {
  return Call([&] { core_.OpenExistCase(In(vilnorId)); });
}

HRESULT BVilnorObject::OpenExistFHP(long* fhpId) {
  return Call([&] { core_.OpenExistFHP(In(fhpId)); });
}

HRESULT BVilnorObject::OpenSearchPatient(long* pid) {
  return Call([&] { core_.OpenSearchPatient(In(pid)); });
}

HRESULT BVilnorObject::OpenWithNewCase(long* pid, long* bid, long* rid) {
  return Call([&] { core_.OpenWithNewCase(In(pid), In(bid), In(rid)); });
}

HRESULT BVilnorObject::OpenWithNewFHP(long* pid, long* bid, long* rid, long* fhpId) {
  return Call([&] { core_.OpenWithNewFHP(In(pid), In(bid), In(rid), In(fhpId)); });
}

HRESULT BVilnorObject::OpenVilnor() {
  return Call([&] { core_.OpenVilnor(); });
}

HRESULT BVilnorObject::ReadNewFHP(long* fhpId) {
  return Call([&] { core_.ReadNewFHP(In(fhpId)); });
}

HRESULT BVilnorObject::ReadExistCase(long* vilnorId) {
  return Call([&] { core_.ReadExistCase(In(vilnorId)); });
}

HRESULT BVilnorObject::FHPExists(long* fhpId, VARIANT_BOOL* result) {
  return CallFor(result, [&] { return core_.FHPExists(In(fhpId)); });
}

HRESULT BVilnorObject::WriteNewCase(long* pid, long* bid, long* rid, BSTR* ssn, BSTR* firstName,
                                    BSTR* lastName, BSTR vilnorOutputPath, BSTR* result) {
  return CallFor(result, [&] {
    return core_.WriteNewCase(In(pid), In(bid), In(rid), In(ssn), In(firstName), In(lastName),
                              In(vilnorOutputPath));
  });
}

HRESULT BVilnorObject::ReadNewCase(long* pid) {
  return Call([&] { core_.ReadNewCase(In(pid)); });
}

HRESULT BVilnorObject::AddNewVilnorUser(long* pid, BSTR* userName) {
  return Call([&] { core_.AddNewVilnorUser(In(pid), In(userName)); });
}

HRESULT BVilnorObject::UpdateVilnorUser(long* pid, BSTR* userName) {
  return Call([&] { core_.UpdateVilnorUser(In(pid), In(userName)); });
}

HRESULT BVilnorObject::DeleteVilnorUser(long* pid) {
  return Call([&] { core_.DeleteVilnorUser(In(pid)); });
}

HRESULT BVilnorObject::GetVilnorUserByPID(long* pid, BSTR* result) {
  return CallFor(result, [&] { return core_.GetVilnorUserByPID(In(pid)); });
}

HRESULT BVilnorObject::OKToSend(long* fhpId, short* errCode, BSTR* errMsg, VARIANT_BOOL* result) {
  return CallFor(result, [&] {
    std::int16_t code = In(errCode);
    std::u16string message = In(errMsg);
    const bool mayBeSent = core_.OKToSend(In(fhpId), code, message);
    Replace(errCode, code);
    Replace(errMsg, message);
    return mayBeSent;
  });
}

HRESULT BVilnorObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (points == nullptr) {
    return E_POINTER;
  }
  *points = nullptr;
  return Call([&] {
    *points = com::MakeObject<com::Enumerator<ConnectionPoints>>(
                  std::vector{ComPtr<IConnectionPoint>(&events_)})
                  .Detach();
  });
}

HRESULT BVilnorObject::FindConnectionPoint(REFIID interfaceId, IConnectionPoint** point) {
  if (point == nullptr) {
    return E_POINTER;
  }
  *point = nullptr;
  return Call([&] {
    const bool known = interfaceId == DIID___BVilnor;
    *point = known ? ComPtr<IConnectionPoint>(&events_).Detach() : nullptr;
    return known ? S_OK : CONNECT_E_NOCONNECTION;
  });
}

void BVilnorObject::UpdateJournal() {
  events_.Raise(kUpdateJournal);
}

}  // namespace vilnor_dll
