// A COM object on the heap: its identity, its reference count and its interfaces.
#pragma once

#include <atomic>
#include <memory>
#include <utility>

#include "com/com_ptr.h"
#include "com/module.h"
#include "com/win32.h"

namespace com {

template <class Base>
struct Extends {
  using Type = Base;
};

// The base of an interface, if a caller may ask for it. A server specializes this for its own
// interfaces.
template <class Interface>
struct BaseOf : Extends<IUnknown> {};
template <>
struct BaseOf<IProvideClassInfo2> : Extends<IProvideClassInfo> {};

// Whether a pointer to `Interface` also serves as the requested interface, IUnknown excepted.
template <class Interface>
bool Answers(REFIID interfaceId) {
  if constexpr (std::is_same_v<Interface, IUnknown>) {
    return false;
  } else {
    return interfaceId == __uuidof(Interface) ||
           Answers<typename BaseOf<Interface>::Type>(interfaceId);
  }
}

// Starts with one reference, held by its creator, and is destroyed with the last. Not aggregatable.
template <class First, class... Rest>
class ComObject : public First, public Rest... {
 public:
  // The interface whose pointer is the object's IUnknown.
  using Identity = First;

  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    if (object == nullptr) {
      return E_POINTER;
    }
    *object = Find(interfaceId);
    if (*object == nullptr) {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }

  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }

  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0 && IsAtHome()) {
      const std::unique_ptr<ComObject> last(this);
    }
    return left;
  }

 protected:
  ComObject() = default;
  virtual ~ComObject() = default;

  // Whether the calling thread may use the object, and destroy it when it releases the last
  // reference.
  virtual bool IsAtHome() const { return true; }

 private:
  friend std::default_delete<ComObject>;

  void* Find(REFIID interfaceId) {
    if (interfaceId == IID_IUnknown) {
      return static_cast<First*>(this);
    }
    void* found = FindAs<First>(interfaceId);
    ((found = found == nullptr ? FindAs<Rest>(interfaceId) : found), ...);
    return found;
  }

  template <class Interface>
  void* FindAs(REFIID interfaceId) {
    return Answers<Interface>(interfaceId) ? static_cast<Interface*>(this) : nullptr;
  }

  ModuleLock lock_;
  std::atomic<ULONG> references_ = 1;
};

// Returns a new object. Throws what its constructor throws.
template <class Object, class... Arguments>
ComPtr<Object> MakeObject(Arguments&&... arguments) {
  return ComPtr<Object>::Attach(
      std::make_unique<Object>(std::forward<Arguments>(arguments)...).release());
}

}  // namespace com
