#include "windows/calls.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "com/bstr.h"
#include "com/com_error.h"
#include "com/com_ptr.h"
#include "db/db_vilnor.h"
#include "util/session_settings.h"
#include "vilnor_dll/interfaces.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

using com::Bstr;
using com::Check;
using com::ComPtr;

// --- How often the component allocates memory: its imports of the allocation functions are
// redirected to counters.

long allocations = 0;

void*(__cdecl* realMalloc)(std::size_t) = nullptr;
void*(__cdecl* realRealloc)(void*, std::size_t) = nullptr;
BSTR(STDAPICALLTYPE* realSysAllocStringLen)(const OLECHAR*, UINT) = nullptr;

void* __cdecl CountedMalloc(std::size_t size) {
  ++allocations;
  return realMalloc(size);
}
void* __cdecl CountedRealloc(void* block, std::size_t size) {
  ++allocations;
  return realRealloc(block, size);
}
BSTR STDAPICALLTYPE CountedSysAllocStringLen(const OLECHAR* text, UINT length) {
  ++allocations;
  return realSysAllocStringLen(text, length);
}

struct Counter {
  std::string_view name;
  void* counted;
  void** real;
};

const std::array kCounters = {
    Counter{"malloc", reinterpret_cast<void*>(CountedMalloc),
            reinterpret_cast<void**>(&realMalloc)},
    Counter{"realloc", reinterpret_cast<void*>(CountedRealloc),
            reinterpret_cast<void**>(&realRealloc)},
    Counter{"SysAllocStringLen", reinterpret_cast<void*>(CountedSysAllocStringLen),
            reinterpret_cast<void**>(&realSysAllocStringLen)},
};

template <class T>
T* At(HMODULE library, DWORD offset) {
  return reinterpret_cast<T*>(reinterpret_cast<char*>(library) + offset);
}

void CountImport(HMODULE library, const IMAGE_THUNK_DATA& name, IMAGE_THUNK_DATA& place) {
  if (IMAGE_SNAP_BY_ORDINAL(name.u1.Ordinal)) {
    return;
  }
  const auto* const import = At<IMAGE_IMPORT_BY_NAME>(library, name.u1.AddressOfData);
  for (const auto& counter : kCounters) {
    if (counter.name == reinterpret_cast<const char*>(import->Name)) {
      DWORD before = 0;
      VirtualProtect(&place, sizeof place, PAGE_READWRITE, &before);
      *counter.real = reinterpret_cast<void*>(place.u1.Function);
      place.u1.Function = reinterpret_cast<std::uintptr_t>(counter.counted);
      VirtualProtect(&place, sizeof place, before, &before);
    }
  }
}

void CountAllocations(HMODULE library) {
  const auto* const dos = At<IMAGE_DOS_HEADER>(library, 0);
  const auto* const headers = At<IMAGE_NT_HEADERS>(library, static_cast<DWORD>(dos->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (const auto* imports = At<IMAGE_IMPORT_DESCRIPTOR>(library, directory.VirtualAddress);
       imports->Name != 0; ++imports) {
    const auto* name = At<IMAGE_THUNK_DATA>(library, imports->OriginalFirstThunk);
    auto* place = At<IMAGE_THUNK_DATA>(library, imports->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++place) {
      CountImport(library, *name, *place);
    }
  }
  if (realMalloc == nullptr) {
    Fail("the component's allocations cannot be counted");
  }
}

// --- The call: an update of a kind that does not exist, which returns before it needs the
// database.

constexpr std::int32_t kNoSuchType = 5;
constexpr std::u16string_view kText = u"26100417";

struct Objects {
  explicit Objects(const std::u16string& connectionString) {
    Check(CoCreateInstance(CLSID_BVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__BVilnor,
                           session.ReceiveVoid()));
    BSTR connection = Bstr(connectionString).Detach();
    short language = 1;
    short type = 1;
    Check(session->InitVilnor(&connection, &language, &type));
    SysFreeString(connection);
    Check(CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__DBVilnor,
                           database.ReceiveVoid()));
  }
  ComPtr<_BVilnor> session;
  ComPtr<_DBVilnor> database;
};

}  // namespace

void MeasureCalls(Computer& computer) {
  const Objects objects(computer.connectionString());
  db::DBVilnor core;
  BSTR text = Bstr(kText).Detach();
  long key = 4711;
  long status = 1;
  long type = kNoSuchType;
  const auto throughCom = [&] { objects.database->UpdateCase(&text, &key, &status, &type); };
  const auto direct = [&] { core.UpdateCase(std::u16string(kText), key, status, type); };
  Measure("calls", {{.name = "COM", .run = throughCom}, {.name = "core", .run = direct}}, 60,
          10'000);
  CountAllocations(GetModuleHandleW(L"Vilnor.dll"));
  throughCom();
  allocations = 0;
  throughCom();
  Print("calls/allocations", static_cast<double>(allocations));
  SysFreeString(text);
  computer.MustBeQuiet();
}

}  // namespace benchmarks
