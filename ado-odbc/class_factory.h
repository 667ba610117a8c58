#pragma once

#include "ado-odbc/class_table.h"
#include "ado-odbc/module.h"
#include "windows/win32.h"

namespace ado_odbc {

class ClassFactory : public IClassFactory {
 public:
  explicit ClassFactory(const ComClass& comClass) : class_(comClass) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;
  virtual ~ClassFactory() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  ModuleUse moduleUse_;
  LONG references_ = 1;
  const ComClass& class_;
};

}  // namespace ado_odbc
