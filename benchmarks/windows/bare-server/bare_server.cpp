// The smallest possible in-process server: a class whose objects do nothing.
#include <objbase.h>

namespace {

class Object : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    if (wanted != IID_IUnknown && wanted != IID_IClassFactory) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = this;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*outer*/, REFIID wanted,
                                           void** object) override {
    return QueryInterface(wanted, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*lock*/) override { return S_OK; }
};

}  // namespace

// The factory is also the object.
STDAPI DllGetClassObject(REFCLSID /*classId*/, REFIID wanted, void** object) {
  static Object theOnly;
  return theOnly.QueryInterface(wanted, object);
}
