// Calls of every method of a dual interface behind its slot of the vtable, as the type library
// describes it.
#pragma once

#include <array>
#include <functional>

#include "com/com_ptr.h"
#include "com/win32.h"

namespace system_tests {

inline constexpr std::size_t kMostArguments = 16;

// What a method takes by reference or gives back finds room here; empty at first.
struct Room {
  alignas(8) std::array<char, 16> bytes{};
};

using Rooms = std::array<Room, kMostArguments>;

// What CallSlot hands over in place of an argument.
enum class Given { References, NullPointers };

// Calls the method behind a slot of the vtable with as many arguments as it has, each by reference
// to its room, or, but for a result, to nothing. A text by value is `text`.
HRESULT CallSlot(IUnknown& object, const FUNCDESC& method, Rooms& rooms,
                 Given given = Given::References, BSTR text = nullptr);

// Whether the method's last argument is a result.
bool HasResult(const FUNCDESC& method);

// Each method of the object's dual interface without those of IDispatch; how many there are.
int ForEachMethod(IDispatch& object, const std::function<void(const FUNCDESC&)>& visit);

}  // namespace system_tests
