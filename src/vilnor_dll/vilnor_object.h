// The base of both classes of the component.
#pragma once

#include "com/dual_object.h"
#include "com/late_binding.h"
#include "vilnor_dll/arguments.h"
#include "vilnor_dll/home_thread.h"
#include "vilnor_dll/interfaces.h"
#include "vilnor_dll/module.h"

namespace vilnor_dll {

// An object with the dual interface `Dual`, a class description, and `Others`. It belongs to the
// thread that created it. If another thread releases the last reference, the object is leaked:
// destroying it would destroy that thread's window and connection.
template <class Dual, class... Others>
class VilnorObject : public com::DualObject<Dual, IProvideClassInfo2, Others...> {
 public:
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** classInfo) override {
    if (classInfo == nullptr) {
      return E_POINTER;
    }
    *classInfo = nullptr;
    return this->Call([&] { *classInfo = com::TypeInfoOf(classId_).Detach(); });
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
  VilnorObject(const CLSID& classId, const IID& eventInterface)
      : com::DualObject<Dual, IProvideClassInfo2, Others...>(kSource),
        classId_(classId),
        eventInterface_(eventInterface) {
    UseSystemPlatform();
  }

  // Call() for a method with a result. `body` returns the result, which is empty after an error.
  template <class Result, class Body>
  HRESULT CallFor(Result* result, Body&& body) {
    if (result == nullptr) {
      return E_POINTER;
    }
    *result = {};
    return this->Call([&] { Out(result, body()); });
  }

  bool IsAtHome() const override { return home_.IsCurrent(); }

  HRESULT InvokeBy(ITypeInfo& description, DISPID member, WORD flags, DISPPARAMS& arguments,
                   VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override {
    return com::InvokeMember(description, *this, member, flags, arguments, result, exception,
                             argumentError);
  }

 private:
  const HomeThread home_;
  const CLSID classId_;
  const IID eventInterface_;
};

}  // namespace vilnor_dll
