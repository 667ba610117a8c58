#pragma once

#include "vilnor_dll/classes.h"
#include "vilnor_dll/com_object.h"

namespace vilnor_dll {

// Makes objects of one class.
class ClassFactory : public ComObject<IClassFactory> {
 public:
  explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

  // A failed creation returns its error with source and text in the thread's error information.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId,
                                           void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  const ClassEntry& entry_;
};

}  // namespace vilnor_dll
