// What For Each walks: the objects of a collection as they were when the walk began.
#pragma once

#include <cstddef>
#include <vector>

#include "ado_dll/module.h"
#include "com/com_ptr.h"
#include "com/win32.h"

namespace ado_dll {

class Enumeration : public IEnumVARIANT {
 public:
  explicit Enumeration(std::vector<com::ComPtr<IDispatch>> items);
  Enumeration(const Enumeration&) = delete;
  Enumeration& operator=(const Enumeration&) = delete;
  virtual ~Enumeration() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** clone) override;

 private:
  ModuleUse moduleUse_;
  LONG references_ = 1;
  std::vector<com::ComPtr<IDispatch>> items_;
  std::size_t position_ = 0;
};

}  // namespace ado_dll
