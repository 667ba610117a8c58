// Calls of every method of a dual interface through its vtable slot, as described by the type
// library.
#pragma once

#include <array>
#include <functional>

#include "com/com_ptr.h"
#include "com/win32.h"

namespace system_tests {

inline constexpr std::size_t kMostArguments = 16;

// Storage for what a method takes by reference or returns; empty at first.
struct Room {
  alignas(8) std::array<char, 16> bytes{};
};

using Rooms = std::array<Room, kMostArguments>;

// What CallSlot passes for an argument.
enum class Given { References, NullPointers };

// Calls the method in a vtable slot with all its arguments, each by reference to its storage or,
// except for a result, null. A text by value is `text`.
HRESULT CallSlot(IUnknown& object, const FUNCDESC& method, Rooms& rooms,
                 Given given = Given::References, BSTR text = nullptr);

// Whether the method's last argument is a result.
bool HasResult(const FUNCDESC& method);

// Visits each method of the object's dual interface except those of IDispatch. Returns how many
// there are.
int ForEachMethod(IDispatch& object, const std::function<void(const FUNCDESC&)>& visit);

}  // namespace system_tests
