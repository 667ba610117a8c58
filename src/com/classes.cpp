#include "com/classes.h"

#include "com/b_vilnor_object.h"
#include "com/db_vilnor_object.h"

namespace com {
namespace {

template <class Object, class Dual>
windows::ComPtr<IUnknown> Create() {
  Dual* const identity = MakeObject<Object>().Detach();
  return windows::ComPtr<IUnknown>::Attach(identity);
}

}  // namespace

std::wstring ClassEntry::ProgramId() const {
  return std::wstring(L"Vilnor.") + name;
}

const std::array<ClassEntry, 2>& Classes() {
  static const std::array<ClassEntry, 2> classes = {
      ClassEntry{CLSID_BVilnor, L"BVilnor", Create<BVilnorObject, _BVilnor>},
      ClassEntry{CLSID_DBVilnor, L"DBVilnor", Create<DBVilnorObject, _DBVilnor>},
  };
  return classes;
}

}  // namespace com
