// A counted reference to a COM object.
#pragma once

#include <utility>

#include "com/win32.h"

namespace com {

template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  // Adds its own reference to a borrowed pointer.
  explicit ComPtr(Interface* borrowed) : pointer_(borrowed) {
    if (pointer_ != nullptr) {
      pointer_->AddRef();
    }
  }
  // Takes over the caller's reference.
  static ComPtr Attach(Interface* owned) {
    ComPtr result;
    result.pointer_ = owned;
    return result;
  }
  ComPtr(const ComPtr& other) : ComPtr(other.pointer_) {}
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPtr() {
    if (pointer_ != nullptr) {
      pointer_->Release();
    }
  }

  Interface* get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }

  // For a call's out parameter: this object owns the reference stored there. Releases its old one.
  Interface** Receive() {
    *this = ComPtr();
    return &pointer_;
  }
  void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }
  // Hands the reference over to the caller.
  Interface* Detach() { return std::exchange(pointer_, nullptr); }

 private:
  Interface* pointer_ = nullptr;
};

}  // namespace com
