// A caller's result variable is empty after a failed call, whatever it held before. Otherwise a
// caller that releases or frees it would crash.
#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/thread.h"
#include "system/com/vtable_calls.h"

namespace system_tests {
namespace {

constexpr char kAny = '\x5A';

// The storage for a method's result.
Room& ResultOf(const FUNCDESC& method, Rooms& rooms) {
  return rooms[static_cast<std::size_t>(method.cParams) - 1];
}

std::size_t SizeOfResult(const FUNCDESC& method) {
  const TYPEDESC& pointer = method.lprgelemdescParam[method.cParams - 1].tdesc;
  return pointer.lptdesc->vt == VT_BOOL ? sizeof(VARIANT_BOOL) : sizeof(void*);
}

// Null, 0 or false: all zero. An empty text may also be an allocated one.
bool IsEmptyResult(const FUNCDESC& method, const Room& room) {
  const bool zero = std::all_of(room.bytes.begin(), room.bytes.begin() + SizeOfResult(method),
                                [](char byte) { return byte == 0; });
  BSTR text = nullptr;
  std::memcpy(&text, room.bytes.data(), sizeof text);
  const bool changed = room.bytes.front() != kAny;
  const bool isText = method.lprgelemdescParam[method.cParams - 1].tdesc.lptdesc->vt == VT_BSTR;
  return zero || (isText && changed && SysStringLen(text) == 0);
}

// While it lives, no box of this thread can be shown: each one ends at once without an answer.
class RefusedBoxes {
 public:
  RefusedBoxes() { count = 0; }
  RefusedBoxes(const RefusedBoxes&) = delete;
  RefusedBoxes& operator=(const RefusedBoxes&) = delete;
  ~RefusedBoxes() { UnhookWindowsHookEx(hook_); }

  static int Count() { return count; }

 private:
  static LRESULT CALLBACK Refuse(int code, WPARAM window, LPARAM creation) {
    std::array<wchar_t, 16> name{};
    if (code == HCBT_CREATEWND &&
        GetClassNameW(reinterpret_cast<HWND>(window), name.data(), static_cast<int>(name.size())) !=
            0 &&
        std::wstring_view(name.data()) == L"#32770") {
      ++count;
      return 1;
    }
    return CallNextHookEx(nullptr, code, window, creation);
  }

  static inline int count = 0;
  HHOOK hook_ = SetWindowsHookExW(WH_CBT, Refuse, nullptr, GetCurrentThreadId());
};

class Results : public testing::Test {
 protected:
  using Call = std::function<HRESULT(const FUNCDESC&, Rooms&)>;

  void SetUp() override {
    ASSERT_TRUE(session_);
    Init(*session_.get(), database_.ConnectionString());
    ASSERT_EQ(CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__DBVilnor,
                               object_.ReceiveVoid()),
              S_OK);
  }

  // Calls every operation with a result, its storage filled with garbage. Returns how many there
  // are.
  static int ExpectEmptyAfter(IDispatch& object, HRESULT expected, const Call& call) {
    int count = 0;
    ForEachMethod(object, [&](const FUNCDESC& method) {
      if (HasResult(method)) {
        Rooms rooms;
        ResultOf(method, rooms).bytes.fill(kAny);
        EXPECT_EQ(call(method, rooms), expected) << "method " << count;
        EXPECT_TRUE(IsEmptyResult(method, ResultOf(method, rooms))) << "method " << count;
        ++count;
      }
    });
    return count;
  }
  // With each of the two objects.
  void ExpectAllEmptyAfter(
      HRESULT expected, const std::function<HRESULT(IDispatch&, const FUNCDESC&, Rooms&)>& call) {
    EXPECT_EQ(ExpectEmptyAfter(*session_.get(), expected,
                               [&](const auto& method, auto& rooms) {
                                 return call(*session_.get(), method, rooms);
                               }),
              4);
    EXPECT_EQ(ExpectEmptyAfter(*object_.get(), expected,
                               [&](const auto& method, auto& rooms) {
                                 return call(*object_.get(), method, rooms);
                               }),
              15);
  }

  TestDatabase database_;
  ComPtr<_BVilnor> session_ = NewBVilnor();
  ComPtr<_DBVilnor> object_;
};

TEST_F(Results, ResultIsEmptyWhenAnArgumentIsRefused) {
  ExpectAllEmptyAfter(E_POINTER, [](IDispatch& object, const FUNCDESC& method, Rooms& rooms) {
    return CallSlot(object, method, rooms, Given::NullPointers);
  });
}

TEST_F(Results, ResultIsEmptyOnAnotherThread) {
  ExpectAllEmptyAfter(RPC_E_WRONG_THREAD,
                      [](IDispatch& object, const FUNCDESC& method, Rooms& rooms) {
                        HRESULT result = S_OK;
                        {
                          const Thread other([&] { result = CallSlot(object, method, rooms); });
                        }
                        return result;
                      });
}

TEST_F(Results, ResultIsEmptyWhenTheOperationFails) {
  for (const auto* table : {u"Vilnor", u"SEPrerequest", u"SEPreRequestEstimateRows", u"Pasient",
                            u"Worker", u"company", u"Postadresseregister", u"VilnorPasient"}) {
    database_.Execute(u"DROP TABLE " + std::u16string(table));
  }
  const Bstr nowhere(u"Q:\\Nowhere");
  const RefusedBoxes boxes;
  ExpectAllEmptyAfter(S_OK, [&](IDispatch& object, const FUNCDESC& method, Rooms& rooms) {
    const int before = boxes.Count();
    const HRESULT result = CallSlot(object, method, rooms, Given::References, nowhere.get());
    EXPECT_GT(boxes.Count(), before) << "slot " << method.oVft;
    return result;
  });
}

}  // namespace
}  // namespace system_tests
