// The trace's events, as the system is given them.
#include "windows/etw_trace.h"

#include <gtest/gtest.h>
#include <string>

#include "fakes/etw_listener.h"

namespace contract {
namespace {

using platform::Ending;
using platform::Reason;
using platform::TracedFile;

constexpr platform::Procedure kProcedure = u" in OpenWithNewCase";

void NTAPI Ignore(LPCGUID /*session*/, ULONG /*isEnabled*/, UCHAR /*level*/, ULONGLONG /*any*/,
                  ULONGLONG /*all*/, PEVENT_FILTER_DESCRIPTOR /*filter*/, void* /*context*/) {}

class EtwTrace : public testing::Test {
 protected:
  fakes::EtwListener calls_;
};

TEST_F(EtwTrace, EventDescribesItselfAndHoldsTheLineAndNothingElse) {
  ::windows::EtwTrace trace(calls_);
  trace.Write({.procedure = kProcedure,
               .file = TracedFile::NewCase,
               .ending = Ending::Kept,
               .reason = Reason::UnknownStatus,
               .error = -2147217900,
               .microseconds = 4'000'000'000,
               .depth = 2});
  ASSERT_EQ(calls_.events.size(), 1U);
  const auto& event = calls_.events[0];
  EXPECT_EQ(event.pieces.at(0).first, 2U);
  EXPECT_EQ(event.pieces.at(0).second, std::string("\x09\0Vilnor\0", 9));
  EXPECT_EQ(event.pieces.at(1).first, 1U);
  EXPECT_EQ(fakes::Read(event), (fakes::EventFields{{"event", "Step"},
                                                    {"Operation", "OpenWithNewCase"},
                                                    {"File", "NewCase"},
                                                    {"Ending", "Kept"},
                                                    {"Reason", "UnknownStatus"},
                                                    {"Error", "-2147217900"},
                                                    {"Microseconds", "4000000000"},
                                                    {"Depth", "2"}}));
  EXPECT_EQ(event.descriptor.Channel, 11);
  EXPECT_EQ(event.descriptor.Level, 3);
  EXPECT_EQ(event.descriptor.Id, 0);
}

TEST_F(EtwTrace, TraitsNameTheProvider) {
  const ::windows::EtwTrace trace(calls_);
  EXPECT_EQ(calls_.traits, std::string("\x09\0Vilnor\0", 9));
}

TEST_F(EtwTrace, TraceIsOnWhileASessionListens) {
  {
    const ::windows::EtwTrace trace(calls_);
    EXPECT_FALSE(platform::traceIsOn);
    calls_.sessions(1);
    EXPECT_TRUE(platform::traceIsOn);
    calls_.sessions(2);
    EXPECT_TRUE(platform::traceIsOn) << "asking for the state changes nothing";
    calls_.sessions(0);
    EXPECT_FALSE(platform::traceIsOn);
    calls_.sessions(1);
    EXPECT_EQ(calls_.unregistered, 0);
  }
  EXPECT_FALSE(platform::traceIsOn);
  EXPECT_EQ(calls_.unregistered, 1);
}

TEST_F(EtwTrace, RefusedProviderIsNotUnregistered) {
  calls_.registered = ERROR_ACCESS_DENIED;
  { const ::windows::EtwTrace trace(calls_); }
  EXPECT_EQ(calls_.unregistered, 0);
  EXPECT_TRUE(calls_.traits.empty());
}

// Wine's calls do nothing, but they are there and succeed.
TEST_F(EtwTrace, SystemTakesTheProviderAndItsEvents) {
  auto& system = ::windows::SystemEtwCalls();
  REGHANDLE registration = 0;
  const GUID provider = {
      0xB9F703D5, 0xCC0D, 0x51D4, {0x59, 0x53, 0xC3, 0x3B, 0x68, 0x9D, 0xD1, 0x81}};
  ASSERT_EQ(system.Register(provider, Ignore, nullptr, registration), ULONG{ERROR_SUCCESS});
  char byte = 1;
  EVENT_DATA_DESCRIPTOR data{
      .Ptr = reinterpret_cast<std::uintptr_t>(&byte), .Size = 1, .Reserved = 0};
  EXPECT_EQ(system.Write(registration, EVENT_DESCRIPTOR{}, 1, &data), ULONG{ERROR_SUCCESS});
  EXPECT_EQ(system.Unregister(registration), ULONG{ERROR_SUCCESS});
}

TEST_F(EtwTrace, ClockCountsMicroseconds) {
  ::windows::EtwTrace trace(calls_);
  const std::int64_t before = trace.Now();
  Sleep(50);
  const std::int64_t passed = trace.Now() - before;
  EXPECT_GE(passed, 40'000);
  EXPECT_LT(passed, 40'000'000);
}

}  // namespace
}  // namespace contract
