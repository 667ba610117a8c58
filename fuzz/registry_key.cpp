// A registry that returns what the input says: limits, codes, names and data.
#include <algorithm>

#include "automation/automation_error.h"
#include "fuzz/world.h"
#include "registry/c_registry.h"

namespace {

class HostileRegistry : public platform::RegistryApi {
 public:
  HostileRegistry(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  std::int32_t OpenKey(Key /*parent*/, const std::u16string& /*path*/, std::uint32_t /*access*/,
                       Key& opened) override {
    opened = ++open_;
    return Code();
  }
  std::int32_t CreateKey(Key /*parent*/, const std::u16string& /*path*/, std::uint32_t /*access*/,
                         Key& opened, std::uint32_t& disposition) override {
    opened = ++open_;
    disposition = Next();
    return Code();
  }
  std::int32_t QueryLimits(Key /*key*/, Limits& limits) override {
    limits = {Next(), Next(), Next()};
    return Code();
  }
  std::int32_t EnumValue(Key /*key*/, std::uint32_t /*index*/, const Limits& /*limits*/,
                         ValueEntry& entry) override {
    entry = {Text(), Next() % 3, Text()};
    return EnumerationCode();
  }
  std::int32_t EnumKey(Key /*key*/, std::uint32_t /*index*/, const Limits& /*limits*/,
                       std::u16string& name) override {
    name = Text();
    return EnumerationCode();
  }
  std::int32_t SetTextValue(Key /*key*/, const std::u16string& /*name*/,
                            const std::u16string& /*text*/) override {
    return Code();
  }
  std::int32_t DeleteValue(Key /*key*/, const std::u16string& /*name*/) override { return Code(); }
  std::int32_t DeleteKey(Key /*parent*/, const std::u16string& /*name*/) override { return Code(); }
  std::int32_t CloseKey(Key /*key*/) override { return Code(); }

 private:
  unsigned Next() { return position_ < size_ ? data_[position_++] : 0; }
  std::u16string Text() {
    const std::size_t length = std::min<std::size_t>(Next() % 8, size_ - position_);
    const std::u16string text = fuzz::Latin1(data_ + position_, length);
    position_ += length;
    return text;
  }
  std::int32_t Code() {
    static constexpr std::int32_t codes[] = {kSuccess,  kSuccess, kSuccess,      kSuccess,
                                             kMoreData, 6,        kAccessDenied, kFileNotFound};
    return codes[Next() % std::size(codes)];
  }
  // An enumeration ends no later than the input.
  std::int32_t EnumerationCode() { return position_ < size_ ? Code() : kNoMoreItems; }

  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t position_ = 0;
  Key open_ = 0;
};

template <class Member>
void Call(Member member) {
  try {
    member();
  } catch (const automation::AutomationError&) {  // NOLINT: an error is an answer, too
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::World world;
  HostileRegistry registry(data, size);
  platform::Platform ports = fakes::With(world.ports, registry);
  platform::Use(ports);
  registry::CRegistry key;
  Call([&] { key.SetKey(u"SOFTWARE\\Kestra"); });
  fuzz::Require(key.ValueCount() >= 0 && key.SubKeyCount() >= 0);
  for (std::int16_t i = -1; i <= key.ValueCount() + 1; ++i) {
    Call([&] { key.GetValue(i); });
    Call([&] { key.GetName(i); });
    Call([&] { key.GetSubKey(i); });
  }
  Call([&] { key.GetValue(u"Path"); });
  Call([&] { key.SetValue(u"Path", u"C:\\"); });
  Call([&] { key.DeleteValue(u"Path"); });
  Call([&] { key.DeleteKey(u"Sub"); });
  Call([&] { key.Create(u"Sub", u"Path", u"C:\\"); });
  Call([&] { key.Refresh(); });
  return 0;
}
