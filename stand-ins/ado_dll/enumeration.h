// The enumerator of For Each: the objects of a collection as they were when the loop began.
#pragma once

#include "com/enumerator.h"
#include "com/variant.h"

namespace ado_dll {

struct Objects {
  using Interface = IEnumVARIANT;
  using Item = VARIANT;
  using Stored = com::ComPtr<IDispatch>;
  static VARIANT Give(const Stored& object) { return com::Variant(object.get()).Detach(); }
};

using Enumeration = com::Enumerator<Objects>;

}  // namespace ado_dll
