// COM interfaces as tables of functions, so that single functions can be replaced.
#define CINTERFACE
#define COBJMACROS
#include "contract/windows/dom_double.h"
// Needs win32.h in front of it.
#include <msxml.h>

namespace contract {
namespace {

constexpr CLSID kDomDocument = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

DomDouble* gDouble = nullptr;
IClassFactory* gReal = nullptr;
IXMLDOMDocumentVtbl gFunctions;
HRESULT(STDMETHODCALLTYPE* gLoad)(IXMLDOMDocument*, VARIANT, VARIANT_BOOL*) = nullptr;

HRESULT STDMETHODCALLTYPE Load(IXMLDOMDocument* document, VARIANT source, VARIANT_BOOL* loaded) {
  gDouble->loadedFrom.push_back(V_VT(&source));
  return gDouble->refusesMemory && V_VT(&source) != VT_BSTR ? E_FAIL
                                                            : gLoad(document, source, loaded);
}

HRESULT STDMETHODCALLTYPE CreateInstance(IClassFactory* /*factory*/, IUnknown* outer, REFIID id,
                                         void** object) {
  const HRESULT result = IClassFactory_CreateInstance(gReal, outer, id, object);
  if (SUCCEEDED(result) && IsEqualIID(id, IID_IXMLDOMDocument)) {
    auto* const document = static_cast<IXMLDOMDocument*>(*object);
    IXMLDOMDocument_put_async(document, VARIANT_TRUE);
    IXMLDOMDocument_put_validateOnParse(document, VARIANT_TRUE);
    IXMLDOMDocument_put_resolveExternals(document, VARIANT_TRUE);
    gFunctions = *document->lpVtbl;
    gLoad = gFunctions.load;
    gFunctions.load = Load;
    document->lpVtbl = &gFunctions;
  }
  return result;
}

HRESULT STDMETHODCALLTYPE QueryInterface(IClassFactory* factory, REFIID id, void** object) {
  const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
  *object = known ? factory : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}

// Never destroyed.
ULONG STDMETHODCALLTYPE CountNothing(IClassFactory* /*factory*/) {
  return 1;
}

HRESULT STDMETHODCALLTYPE LockServer(IClassFactory* /*factory*/, WINBOOL /*lock*/) {
  return S_OK;
}

IClassFactoryVtbl gFactoryFunctions = {QueryInterface, CountNothing, CountNothing, CreateInstance,
                                       LockServer};
IClassFactory gFactory = {&gFactoryFunctions};

}  // namespace

DomDouble::DomDouble() {
  gDouble = this;
  CoGetClassObject(kDomDocument, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                   reinterpret_cast<void**>(&gReal));
  CoRegisterClassObject(kDomDocument, reinterpret_cast<IUnknown*>(&gFactory), CLSCTX_INPROC_SERVER,
                        REGCLS_MULTIPLEUSE, &registration_);
}

DomDouble::~DomDouble() {
  CoRevokeClassObject(registration_);
  IClassFactory_Release(gReal);
  gDouble = nullptr;
}

}  // namespace contract
