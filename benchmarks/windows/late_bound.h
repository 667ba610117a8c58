// An automation object as a script engine uses it: each property and method is looked up by name at
// each use; nothing is cached.
#pragma once

#include <algorithm>
#include <array>
#include <span>

#include "automation/value.h"
#include "com/com_ptr.h"
#include "com/variant.h"
#include "com/win32.h"

namespace benchmarks {

class LateBound {
 public:
  // As CreateObject: by program id.
  static LateBound Create(const wchar_t* programId);

  // The result of a property or a function, as a value or as an object. Any failure ends the
  // program.
  template <class... Arguments>
  automation::Value Get(const wchar_t* name, const Arguments&... arguments) const {
    com::Variant result;
    InvokeWith(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &result, arguments...);
    return com::ToValue(result.get());
  }
  template <class... Arguments>
  LateBound Object(const wchar_t* name, const Arguments&... arguments) const {
    com::Variant result;
    InvokeWith(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &result, arguments...);
    return LateBound(ObjectIn(result.get()));
  }
  template <class... Arguments>
  void Call(const wchar_t* name, const Arguments&... arguments) const {
    InvokeWith(name, DISPATCH_METHOD, nullptr, arguments...);
  }
  void Put(const wchar_t* name, const automation::Value& value) const {
    InvokeWith(name, DISPATCH_PROPERTYPUT, nullptr, value);
  }

 private:
  explicit LateBound(com::ComPtr<IDispatch> object) : object_(std::move(object)) {}

  static com::Variant Argument(const automation::Value& value) { return com::Variant(value); }
  static com::Variant Argument(const LateBound& object) {
    return com::Variant(object.object_.get());
  }
  static com::ComPtr<IDispatch> ObjectIn(const VARIANT& variant);

  template <class... Arguments>
  void InvokeWith(const wchar_t* name, WORD kind, com::Variant* result,
                  const Arguments&... arguments) const {
    const std::array<com::Variant, sizeof...(arguments)> owned{Argument(arguments)...};
    // The last argument comes first.
    std::array<VARIANT, sizeof...(arguments)> passed{};
    std::transform(owned.begin(), owned.end(), passed.rbegin(),
                   [](const com::Variant& argument) { return argument.get(); });
    Invoke(name, kind, passed, result);
  }
  void Invoke(const wchar_t* name, WORD kind, std::span<VARIANT> arguments,
              com::Variant* result) const;

  com::ComPtr<IDispatch> object_;
};

}  // namespace benchmarks
