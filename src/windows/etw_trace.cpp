#include "windows/etw_trace.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace windows {
namespace {

// A description as the system wants it: its size in two bytes, then the contents.
template <std::size_t Size>
// NOLINTNEXTLINE(modernize-avoid-c-arrays): what a literal is
consteval std::array<char, Size + 1> Described(const char (&contents)[Size]) {
  static_assert(Size + 1 < 256);
  std::array<char, Size + 1> block{};
  block[0] = static_cast<char>(Size + 1);
  for (std::size_t i = 0; i + 1 < Size; ++i) {
    block[i + 2] = contents[i];
  }
  return block;
}

constexpr auto kTraits = Described("Vilnor\0");
// No tags, the event's name, then each field's name and type: 1 UTF-16, 2 8-bit text, 4 one byte, 7
// a signed and 8 an unsigned number. Write() gives the values in this order.
constexpr auto kEvent = Described(
    "\0"
    "Step\0"
    "Operation\0\x01"
    "File\0\x02"
    "Ending\0\x02"
    "Reason\0\x02"
    "Error\0\x07"
    "Microseconds\0\x08"
    "Depth\0\x04");

// Where each description's kind is told.
constexpr ULONG kIsTraits = 2;
constexpr ULONG kIsEvent = 1;
// Marks events that describe themselves, also on a Windows that does not know them.
constexpr UCHAR kSelfDescribing = 11;

EVENT_DATA_DESCRIPTOR Data(const void* bytes, std::size_t size, ULONG kind = 0) {
  return {.Ptr = reinterpret_cast<std::uintptr_t>(bytes),
          .Size = static_cast<ULONG>(size),
          .Reserved = kind};
}

EVENT_DATA_DESCRIPTOR Text(const char* text) {
  return Data(text, std::strlen(text) + 1);
}

EVENT_DATA_DESCRIPTOR Text(const char16_t* text) {
  return Data(text, (std::u16string_view(text).size() + 1) * sizeof(char16_t));
}

template <class Number>
EVENT_DATA_DESCRIPTOR Value(const Number& number) {
  return Data(&number, sizeof number);
}

// Called by the system, on any thread, when the first session begins to listen, when what the
// sessions want changes, and when the last one ends.
void NTAPI SessionsChanged(LPCGUID /*session*/, ULONG isEnabled, UCHAR /*level*/, ULONGLONG /*any*/,
                           ULONGLONG /*all*/, PEVENT_FILTER_DESCRIPTOR /*filter*/,
                           void* /*context*/) {
  constexpr ULONG kDisabled = 0;
  constexpr ULONG kEnabled = 1;
  if (isEnabled == kDisabled || isEnabled == kEnabled) {
    platform::traceIsOn = isEnabled == kEnabled;
  }
}

}  // namespace

ULONG EtwCalls::Register(const GUID& provider, PENABLECALLBACK enabled, void* context,
                         REGHANDLE& registration) {
  return EventRegister(&provider, enabled, context, &registration);
}

bool EtwCalls::SetTraits(REGHANDLE registration, const void* traits, ULONG size) {
  using Function = ULONG(WINAPI*)(REGHANDLE, int, const void*, ULONG);
  constexpr int kSetTraits = 2;
  const HMODULE library = GetModuleHandleW(L"advapi32.dll");
  auto* const set = library == nullptr ? nullptr
                                       : reinterpret_cast<Function>(reinterpret_cast<void*>(
                                             GetProcAddress(library, "EventSetInformation")));
  return set != nullptr && set(registration, kSetTraits, traits, size) == ERROR_SUCCESS;
}

ULONG EtwCalls::Write(REGHANDLE registration, const EVENT_DESCRIPTOR& event, ULONG count,
                      EVENT_DATA_DESCRIPTOR* data) {
  return EventWrite(registration, &event, count, data);
}

ULONG EtwCalls::Unregister(REGHANDLE registration) {
  return EventUnregister(registration);
}

EtwCalls& SystemEtwCalls() {
  static EtwCalls calls;
  return calls;
}

EtwTrace::EtwTrace(EtwCalls& calls) : calls_(calls) {
  if (calls_.Register(kTraceProvider, SessionsChanged, nullptr, registration_) != ERROR_SUCCESS) {
    registration_ = 0;
    return;
  }
  // Without traits an event carries both descriptions at its beginning.
  calls_.SetTraits(registration_, kTraits.data(), kTraits.size());
}

// Ends the system's calls to SessionsChanged before the code is unloaded.
EtwTrace::~EtwTrace() {
  if (registration_ != 0) {
    calls_.Unregister(registration_);
  }
  platform::traceIsOn = false;
}

std::int64_t EtwTrace::Now() noexcept {
  LARGE_INTEGER ticks{};
  LARGE_INTEGER perSecond{};
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&perSecond);
  constexpr std::int64_t kMicroseconds = 1'000'000;
  // The whole seconds apart, so that nothing overflows.
  return ticks.QuadPart / perSecond.QuadPart * kMicroseconds +
         ticks.QuadPart % perSecond.QuadPart * kMicroseconds / perSecond.QuadPart;
}

void EtwTrace::Write(const platform::TraceLine& line) noexcept {
  EVENT_DESCRIPTOR event{};
  event.Channel = kSelfDescribing;
  event.Level = static_cast<UCHAR>(LevelOf(line));
  std::array data = {Data(kTraits.data(), kTraits.size(), kIsTraits),
                     Data(kEvent.data(), kEvent.size(), kIsEvent),
                     Text(line.procedure.name()),
                     Text(NameOf(line.file)),
                     Text(NameOf(line.ending)),
                     Text(NameOf(line.reason)),
                     Value(line.error),
                     Value(line.microseconds),
                     Value(line.depth)};
  calls_.Write(registration_, event, data.size(), data.data());
}

}  // namespace windows
