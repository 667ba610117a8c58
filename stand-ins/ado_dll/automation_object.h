// What every object of this ADO shares: the reference count, IDispatch by the type library, and the
// word that its methods leave error information.
#pragma once

#include <ado_interfaces.h>
#include <array>
#include <memory>
#include <utility>

#include "ado_dll/module.h"
#include "com/com_ptr.h"
#include "com/win32.h"

namespace ado_dll {

// An object with the dual interface `Interface`, which extends the interfaces `Extended`. It begins
// with one reference; make it by Make().
template <class Interface, class... Extended>
class AutomationObject : public Interface, public ISupportErrorInfo {
 public:
  AutomationObject() = default;
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;
  virtual ~AutomationObject() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) {
      return E_POINTER;
    }
    *object = nullptr;
    if (id == __uuidof(ISupportErrorInfo)) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else if (id == __uuidof(IUnknown) || IsOwnInterface(id)) {
      *object = static_cast<Interface*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) {
      std::unique_ptr<AutomationObject> last(this);
    }
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) override {
    if (index != 0) {
      return DISP_E_BADINDEX;
    }
    *info = com::ComPtr<ITypeInfo>(OwnTypeInfo()).Detach();
    return *info == nullptr ? TYPE_E_CANTLOADLIBRARY : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count,
                                          LCID /*locale*/, DISPID* ids) override {
    ITypeInfo* const info = OwnTypeInfo();
    return info == nullptr ? TYPE_E_CANTLOADLIBRARY : info->GetIDsOfNames(names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                                   DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                   UINT* badArgument) override {
    ITypeInfo* const info = OwnTypeInfo();
    if (info == nullptr) {
      return TYPE_E_CANTLOADLIBRARY;
    }
    SetErrorInfo(0, nullptr);
    return info->Invoke(static_cast<Interface*>(this), member, flags, arguments, result, exception,
                        badArgument);
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
    return IsOwnInterface(id) ? S_OK : S_FALSE;
  }

 private:
  static bool IsOwnInterface(REFIID id) {
    return id == __uuidof(IDispatch) || id == __uuidof(Interface) ||
           ((id == __uuidof(Extended)) || ...);
  }
  // Owned by the object; null when the type library cannot be loaded.
  ITypeInfo* OwnTypeInfo() {
    if (!typeInfo_) {
      typeInfo_ = TypeInfoOf(__uuidof(Interface));
    }
    return typeInfo_.get();
  }

  ModuleUse moduleUse_;
  LONG references_ = 1;
  com::ComPtr<ITypeInfo> typeInfo_;
};

template <class Object, class... Arguments>
com::ComPtr<Object> Make(Arguments&&... arguments) {
  return com::ComPtr<Object>::Attach(
      std::make_unique<Object>(std::forward<Arguments>(arguments)...).release());
}

}  // namespace ado_dll
