#include "vilnor_dll/classes.h"

#include "vilnor_dll/b_vilnor_object.h"
#include "vilnor_dll/db_vilnor_object.h"

namespace vilnor_dll {

const std::array<com::ClassEntry, 2>& Classes() {
  static const std::array<com::ClassEntry, 2> classes = {
      com::ClassEntry{.id = CLSID_BVilnor,
                      .name = L"Vilnor.BVilnor",
                      .programId = L"Vilnor.BVilnor",
                      .newestProgramId = nullptr,
                      .create = com::Create<BVilnorObject>},
      com::ClassEntry{.id = CLSID_DBVilnor,
                      .name = L"Vilnor.DBVilnor",
                      .programId = L"Vilnor.DBVilnor",
                      .newestProgramId = nullptr,
                      .create = com::Create<DBVilnorObject>},
  };
  return classes;
}

}  // namespace vilnor_dll
