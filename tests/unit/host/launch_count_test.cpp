// The count of launches, of which only the overflow is visible.
#include <functional>
#include <gmock/gmock.h>

#include "unit/host/host_fixture.h"

namespace host {
namespace {

using Texts = std::vector<std::u16string>;

constexpr std::size_t kMostLaunches = 32767;

class LaunchCount : public BVilnorTest {
 protected:
  LaunchCount() { platform::Use(changed_); }
  ~LaunchCount() override { platform::Use(ports); }

  NoFiles files_;

 private:
  platform::Platform changed_ = fakes::With(ports, files_);
};

// One test for all operations, because that many launches take seconds.
TEST_F(LaunchCount, LaunchCountOverflowsAt16BitsOnceTheRequestIsWritten) {
  const std::vector<std::function<void()>> operations = {
      [&] { vilnor.OpenExistCase(7); }, [&] { vilnor.OpenSearchPatient(4711); },
      [&] { vilnor.OpenWithNewCase(4711, 12, 3); }, [&] { vilnor.OpenExistFHP(8); }};
  for (std::size_t i = 0; i < kMostLaunches; ++i) {
    const std::size_t kind = i % 1000;
    operations[kind < operations.size() ? kind : 0]();
  }
  ASSERT_EQ(processes.started.size(), kMostLaunches);
  ASSERT_TRUE(dialogs.shown.empty());

  Texts written;
  for (const auto& open : operations) {
    files_.lastWritten.clear();
    open();
    written.push_back(files_.lastWritten);
  }
  EXPECT_EQ(dialogs.Texts(),
            (Texts{u"6 Overflow in OpenExistCase", u"6 Overflow in OpenSearchPatient",
                   u"6 Overflow in OpenWithNewCase", u"6 Overflow in OpenExistCase"}));
  EXPECT_EQ(written,
            (Texts{ExchangePath(u"InExistCase7.xml"), ExchangePath(u"Search19850312-1234.xml"),
                   ExchangePath(u"InNewCase4711.xml"), ExchangePath(u"InExistCase0.xml")}));
  EXPECT_EQ(processes.started.size(), kMostLaunches);

  // Operations that are not counted still work, and another object has its own count.
  vilnor.OpenVilnor();
  BVilnor(events).OpenExistCase(7);
  EXPECT_EQ(processes.started.size(), kMostLaunches + 2);
}

}  // namespace
}  // namespace host
