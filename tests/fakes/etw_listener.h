// Takes the part of the system's tracing, which does nothing in Wine: keeps the events, and reads
// them by the published layout of self-describing ones.
#pragma once

#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "windows/etw_trace.h"

namespace fakes {

class EtwListener : public windows::EtwCalls {
 public:
  struct Event {
    EVENT_DESCRIPTOR descriptor;
    // Kind and bytes of each piece.
    std::vector<std::pair<ULONG, std::string>> pieces;
  };

  ULONG Register(const GUID& /*provider*/, PENABLECALLBACK enabled, void* context,
                 REGHANDLE& registration) override {
    sessions = [=](ULONG isEnabled) { enabled(nullptr, isEnabled, 5, 0, 0, nullptr, context); };
    registration = 7;
    return registered;
  }
  bool SetTraits(REGHANDLE /*registration*/, const void* bytes, ULONG size) override {
    traits.assign(static_cast<const char*>(bytes), size);
    return true;
  }
  ULONG Write(REGHANDLE registration, const EVENT_DESCRIPTOR& event, ULONG count,
              EVENT_DATA_DESCRIPTOR* data) override {
    EXPECT_EQ(registration, 7U);
    Event& written = events.emplace_back(Event{event, {}});
    for (ULONG piece = 0; piece < count; ++piece) {
      const auto* bytes =
          reinterpret_cast<const char*>(static_cast<std::uintptr_t>(data[piece].Ptr));
      written.pieces.emplace_back(data[piece].Reserved, std::string(bytes, data[piece].Size));
    }
    return ERROR_SUCCESS;
  }
  ULONG Unregister(REGHANDLE registration) override {
    EXPECT_EQ(registration, 7U);
    ++unregistered;
    return ERROR_SUCCESS;
  }

  std::function<void(ULONG)> sessions;
  std::string traits;
  std::vector<Event> events;
  ULONG registered = ERROR_SUCCESS;
  int unregistered = 0;
};

// Takes an event apart.
class EventReader {
 public:
  explicit EventReader(std::string bytes) : bytes_(std::move(bytes)) {}
  bool AtEnd() const { return position_ == bytes_.size(); }
  std::string Text() {
    const std::string text = bytes_.c_str() + position_;
    position_ += text.size() + 1;
    return text;
  }
  std::string WideText() {
    std::string ascii;
    for (auto unit = Number<char16_t>(); unit != 0; unit = Number<char16_t>()) {
      EXPECT_LT(unit, 0x80);
      ascii += static_cast<char>(unit);
    }
    return ascii;
  }
  template <class T>
  T Number() {
    T number{};
    if (position_ + sizeof number > bytes_.size()) {
      ADD_FAILURE() << "the event is too short";
      position_ = bytes_.size();
      return T{};
    }
    std::memcpy(&number, bytes_.data() + position_, sizeof number);
    position_ += sizeof number;
    return number;
  }

 private:
  std::string bytes_;
  std::size_t position_ = 0;
};

using EventFields = std::vector<std::pair<std::string, std::string>>;

inline std::string ValueOf(EventReader& data, int type) {
  switch (type) {
    case 1:
      return data.WideText();
    case 2:
      return data.Text();
    case 4:
      return std::to_string(data.Number<std::uint8_t>());
    case 7:
      return std::to_string(data.Number<std::int32_t>());
    case 8:
      return std::to_string(data.Number<std::uint32_t>());
    default:
      ADD_FAILURE() << "a field of the unknown type " << type;
      return {};
  }
}

// The event's name, then its fields.
inline EventFields Read(const EtwListener::Event& event) {
  const std::string& description = event.pieces.at(1).second;
  std::string values;
  for (std::size_t piece = 2; piece < event.pieces.size(); ++piece) {
    EXPECT_EQ(event.pieces[piece].first, 0U);
    values += event.pieces[piece].second;
  }
  EventReader fields(description);
  EventReader data(values);
  EXPECT_EQ(fields.Number<std::uint16_t>(), description.size());
  EXPECT_EQ(fields.Number<std::uint8_t>(), 0) << "tags";
  EventFields read = {{"event", fields.Text()}};
  while (!fields.AtEnd()) {
    const std::string name = fields.Text();
    read.emplace_back(name, ValueOf(data, fields.Number<std::uint8_t>()));
  }
  EXPECT_TRUE(data.AtEnd()) << "more values than fields";
  return read;
}

}  // namespace fakes
