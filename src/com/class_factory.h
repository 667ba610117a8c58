#pragma once

#include "com/com_object.h"
#include "com/server.h"

namespace com {

// Makes objects of one class.
class ClassFactory : public ComObject<IClassFactory> {
 public:
  // `source` is that of a failed creation's error, unless it names one itself.
  ClassFactory(const ClassEntry& entry, const wchar_t* source) : entry_(entry), source_(source) {}

  // A failed creation returns its error with source and text in the thread's error information.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId,
                                           void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  const ClassEntry& entry_;
  const wchar_t* source_;
};

}  // namespace com
