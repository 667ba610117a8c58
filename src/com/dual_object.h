// An object with a dual interface that the server's type library describes.
#pragma once

#include "com/com_object.h"
#include "com/failure.h"
#include "com/module.h"

namespace com {

// An object with the dual interface `Dual`, and `Others`. Calls on another thread than its own
// return RPC_E_WRONG_THREAD.
template <class Dual, class... Others>
class DualObject : public ComObject<Dual, ISupportErrorInfo, Others...> {
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
                                   DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override {
    if (reserved != IID_NULL) {
      return DISP_E_UNKNOWNINTERFACE;
    }
    if (arguments == nullptr) {
      return E_POINTER;
    }
    return Call([&] {
      return InvokeBy(*Description().get(), member, flags, *arguments, result, exception,
                      argumentError);
    });
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID interfaceId) override {
    return Answers<Dual>(interfaceId) ? S_OK : S_FALSE;
  }

 protected:
  // `source` is the error source when an error names none; it outlives the object.
  explicit DualObject(const wchar_t* source = L"") : source_(source) {}

  // Runs the body of an interface method. Keeps the object alive until the body returns, even if
  // the caller releases its last reference meanwhile (in an event, or while a message box is open).
  template <class Body>
  HRESULT Call(Body&& body) {
    if (!this->IsAtHome()) {
      return RPC_E_WRONG_THREAD;
    }
    const ComPtr<Dual> alive(this);
    return Guarded({__uuidof(Dual), source_}, std::forward<Body>(body));
  }

  // A call by dispatch id; `description` is that of `Dual`.
  virtual HRESULT InvokeBy(ITypeInfo& description, DISPID member, WORD flags, DISPPARAMS& arguments,
                           VARIANT* result, EXCEPINFO* exception, UINT* argumentError) {
    SetErrorInfo(0, nullptr);
    return description.Invoke(static_cast<Dual*>(this), member, flags, &arguments, result,
                              exception, argumentError);
  }

 private:
  ComPtr<ITypeInfo> Description() {
    if (!description_) {
      description_ = TypeInfoOf(__uuidof(Dual));
    }
    return description_;
  }

  const wchar_t* const source_;
  // Read from the DLL's resources on first use.
  ComPtr<ITypeInfo> description_;
};

}  // namespace com
