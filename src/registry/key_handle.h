// Ownership of an open registry key.
#pragma once

#include <utility>

#include "platform/registry_api.h"

namespace registry {

// Closes its key on destruction; empty after a move or if made without a key.
class KeyHandle {
 public:
  KeyHandle() = default;
  KeyHandle(platform::RegistryApi& api, platform::RegistryApi::Key key) : api_(&api), key_(key) {}
  KeyHandle(KeyHandle&& other) noexcept
      : api_(std::exchange(other.api_, nullptr)), key_(std::exchange(other.key_, 0)) {}
  KeyHandle& operator=(KeyHandle&& other) noexcept {
    std::swap(api_, other.api_);
    std::swap(key_, other.key_);
    return *this;
  }
  KeyHandle(const KeyHandle&) = delete;
  KeyHandle& operator=(const KeyHandle&) = delete;
  ~KeyHandle() {
    if (api_ != nullptr) {
      api_->CloseKey(key_);
    }
  }

  // Whether a key is owned.
  explicit operator bool() const { return api_ != nullptr; }
  // 0 if empty.
  platform::RegistryApi::Key key() const { return key_; }

 private:
  platform::RegistryApi* api_ = nullptr;
  platform::RegistryApi::Key key_ = 0;
};

}  // namespace registry
