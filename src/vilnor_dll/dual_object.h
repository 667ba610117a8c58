// What both classes of the component have in common: a dual interface described by the type
// library.
#pragma once

#include "vilnor_dll/arguments.h"
#include "vilnor_dll/com_object.h"
#include "vilnor_dll/failure.h"
#include "vilnor_dll/home_thread.h"
#include "vilnor_dll/late_binding.h"

namespace vilnor_dll {

// An object with the dual interface `Dual`, a class description, and `Others`.
template <class Dual, class... Others>
class DualObject : public ComObject<Dual, ISupportErrorInfo, IProvideClassInfo2, Others...> {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) {
      return E_POINTER;
    }
    return Call([&] { *count = 1; });
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*locale*/,
                                        ITypeInfo** typeInfo) override {
    if (typeInfo == nullptr) {
      return E_POINTER;
    }
    *typeInfo = nullptr;
    return index == 0 ? Call([&] { *typeInfo = Description().Detach(); }) : DISP_E_BADINDEX;
  }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count,
                                          LCID /*locale*/, DISPID* ids) override {
    if (reserved != IID_NULL) {
      return DISP_E_UNKNOWNINTERFACE;
    }
    return Call([&] { return Description()->GetIDsOfNames(names, count, ids); });
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID /*locale*/, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override {
    if (reserved != IID_NULL) {
      return DISP_E_UNKNOWNINTERFACE;
    }
    if (parameters == nullptr) {
      return E_POINTER;
    }
    return Call([&] {
      return InvokeMember(*Description().get(), *this, member, flags, *parameters, result,
                          exception, argumentError);
    });
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID interfaceId) override {
    return interfaceId == __uuidof(Dual) ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** classInfo) override {
    if (classInfo == nullptr) {
      return E_POINTER;
    }
    *classInfo = nullptr;
    return Call([&] { *classInfo = TypeInfoOf(classId_).Detach(); });
  }

  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* identifier) override {
    if (identifier == nullptr) {
      return E_POINTER;
    }
    const bool known = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID && eventInterface_ != IID_NULL;
    *identifier = known ? eventInterface_ : GUID_NULL;
    return known ? S_OK : E_INVALIDARG;
  }

 protected:
  // `eventInterface` is the default source of the class, IID_NULL for a class without events.
  DualObject(const CLSID& classId, const IID& eventInterface)
      : classId_(classId), eventInterface_(eventInterface) {
    UseSystemPlatform();
  }

  // Runs the body of an interface's method. The object lives until the body has returned, even when
  // the caller's last reference goes meanwhile (in an event, or while a message box is open).
  // RPC_E_WRONG_THREAD on another thread than the one that made the object.
  template <class Body>
  HRESULT Call(Body&& body) {
    if (!home_.IsCurrent()) {
      return RPC_E_WRONG_THREAD;
    }
    const com::ComPtr<Dual> alive(this);
    return Guarded(__uuidof(Dual), std::forward<Body>(body));
  }

  // The same for a method with a result, which is what the body returns; empty after an error.
  template <class Result, class Body>
  HRESULT CallFor(Result* result, Body&& body) {
    if (result == nullptr) {
      return E_POINTER;
    }
    *result = {};
    return Call([&] { Out(result, body()); });
  }

 private:
  com::ComPtr<ITypeInfo> Description() {
    if (!description_) {
      description_ = TypeInfoOf(__uuidof(Dual));
    }
    return description_;
  }

  // An object whose last reference goes on another thread stays for good: its end would be the end
  // of that thread's window and connection.
  bool MayEnd() const override { return home_.IsCurrent(); }

  const HomeThread home_;
  const CLSID classId_;
  const IID eventInterface_;
  // Read from the DLL's resources at the first call that needs it.
  com::ComPtr<ITypeInfo> description_;
};

}  // namespace vilnor_dll
