// COM enumerators over a snapshot of items.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "com/com_object.h"
#include "com/failure.h"

namespace com {

// `Kind` names the interface (Kind::Interface), the type that callers receive (Kind::Item), the
// type that is stored (Kind::Stored; copying it adds references) and the conversion (Kind::Give).
template <class Kind>
class Enumerator : public ComObject<typename Kind::Interface> {
 public:
  using Interface = typename Kind::Interface;
  using Item = typename Kind::Item;
  using Items = std::vector<typename Kind::Stored>;

  explicit Enumerator(Items items, std::size_t position = 0)
      : items_(std::move(items)), position_(position) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG count, Item* given, ULONG* givenCount) override {
    if (given == nullptr || (givenCount == nullptr && count != 1)) {
      return E_POINTER;
    }
    const std::size_t taken = std::min<std::size_t>(count, items_.size() - position_);
    const auto first = items_.begin() + static_cast<std::ptrdiff_t>(position_);
    std::transform(first, first + static_cast<std::ptrdiff_t>(taken), given, Kind::Give);
    position_ += taken;
    if (givenCount != nullptr) {
      *givenCount = static_cast<ULONG>(taken);
    }
    return taken == count ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t skipped = std::min<std::size_t>(count, items_.size() - position_);
    position_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Reset() override {
    position_ = 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(Interface** clone) override {
    if (clone == nullptr) {
      return E_POINTER;
    }
    *clone = nullptr;
    return Guarded({__uuidof(Interface)},
                   [&] { *clone = MakeObject<Enumerator>(items_, position_).Detach(); });
  }

 private:
  Items items_;
  std::size_t position_;
};

}  // namespace com
