#pragma once

#include "ado_dll/class_table.h"
#include "ado_dll/module.h"
#include "com/win32.h"

namespace ado_dll {

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

}  // namespace ado_dll
