#pragma once

#include "com/com_object.h"
#include "com/server.h"

namespace com {

// Makes objects of one class.
class ClassFactory : public ComObject<IClassFactory> {
 public:
  // `source` is the error source of a failed creation whose error names none.
  ClassFactory(const ClassEntry& entry, const wchar_t* source) : entry_(entry), source_(source) {}

  // A failed creation returns its error and sets source and text in the thread's error information.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId,
                                           void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  const ClassEntry& entry_;
  const wchar_t* source_;
};

}  // namespace com
