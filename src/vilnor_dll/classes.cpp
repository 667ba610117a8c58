#include "vilnor_dll/classes.h"

#include "vilnor_dll/b_vilnor_object.h"
#include "vilnor_dll/db_vilnor_object.h"

namespace vilnor_dll {
namespace {

template <class Object, class Dual>
com::ComPtr<IUnknown> Create() {
  Dual* const identity = MakeObject<Object>().Detach();
  return com::ComPtr<IUnknown>::Attach(identity);
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

}  // namespace vilnor_dll
