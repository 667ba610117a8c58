#include "ado_dll/enumeration.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "ado_dll/automation_object.h"
#include "ado_dll/method.h"

namespace ado_dll {

Enumeration::Enumeration(std::vector<com::ComPtr<IDispatch>> items) : items_(std::move(items)) {}

HRESULT Enumeration::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  const bool known = id == IID_IUnknown || id == IID_IEnumVARIANT;
  *object = known ? this : nullptr;
  if (!known) {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG Enumeration::AddRef() {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG Enumeration::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) {
    const std::unique_ptr<Enumeration> last(this);
  }
  return static_cast<ULONG>(left);
}

HRESULT Enumeration::Next(ULONG count, VARIANT* items, ULONG* fetched) {
  ULONG given = 0;
  for (; given < count && position_ < items_.size(); ++given, ++position_) {
    VariantInit(&items[given]);
    V_VT(&items[given]) = VT_DISPATCH;
    V_DISPATCH(&items[given]) = com::ComPtr<IDispatch>(items_[position_]).Detach();
  }
  if (fetched != nullptr) {
    *fetched = given;
  }
  return given == count ? S_OK : S_FALSE;
}

HRESULT Enumeration::Skip(ULONG count) {
  const std::size_t left = items_.size() - position_;
  position_ += std::min<std::size_t>(count, left);
  return count <= left ? S_OK : S_FALSE;
}

HRESULT Enumeration::Reset() {
  position_ = 0;
  return S_OK;
}

HRESULT Enumeration::Clone(IEnumVARIANT** clone) {
  return Method([&] {
    auto copy = Make<Enumeration>(items_);
    copy->position_ = position_;
    Out(clone) = copy.Detach();
  });
}

}  // namespace ado_dll
