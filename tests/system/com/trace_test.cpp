// The component's own objects, with the system's adapters, while a session listens to the trace.
#include <gmock/gmock.h>
#include <string>

#include "fakes/etw_listener.h"
#include "fakes/with.h"
#include "system/com/box_answerer.h"
#include "system/com/event_sink.h"
#include "vilnor_dll/b_vilnor_object.h"

namespace system_tests {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class ListenedTo : public testing::Test {
 protected:
  ListenedTo() {
    platform::Use(traced_);
    listener_.sessions(1);
    TextArgument connection(u"Driver=There is no such driver;PWD=kanarie-hemlig");
    short language = 1;
    short type = 2;
    EXPECT_EQ(session_->InitVilnor(connection.Reference(), &language, &type), S_OK);
  }
  ~ListenedTo() override {
    listener_.sessions(0);
    platform::Use(system_);
  }

  bool FHPExists() {
    const BoxAnswerer boxes;
    long id = 4711;
    VARIANT_BOOL exists = VARIANT_TRUE;
    EXPECT_EQ(session_->FHPExists(&id, &exists), S_OK);
    return exists != VARIANT_FALSE;
  }
  // Operation, ending and reason of each event.
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const auto& event : listener_.events) {
      const auto fields = fakes::Read(event);
      texts.push_back(fields.at(1).second + " " + fields.at(3).second + " " + fields.at(4).second);
    }
    return texts;
  }
  std::string Bytes() const {
    std::string all;
    for (const auto& event : listener_.events) {
      for (const auto& [kind, bytes] : event.pieces) {
        all += bytes;
      }
    }
    return all;
  }

  ComPtr<vilnor_dll::BVilnorObject> session_ = com::MakeObject<vilnor_dll::BVilnorObject>();
  platform::Platform system_ = platform::Current();
  fakes::EtwListener listener_;
  windows::EtwTrace trace_{listener_};
  platform::Platform traced_ = fakes::With(system_, trace_);
};

std::string Wide(const std::string& ascii) {
  std::string wide;
  for (const char letter : ascii) {
    wide += {letter, '\0'};
  }
  return wide;
}

TEST_F(ListenedTo, OperationIsTraced) {
  EXPECT_FALSE(FHPExists());
  EXPECT_THAT(Texts(), Contains("InitVilnor Done "));
  EXPECT_THAT(Texts(), Contains("DBVilnor Raised "));
  EXPECT_THAT(Texts(), Contains("FHPExists Failed "));
}

TEST_F(ListenedTo, EventWhoseSinkFailsIsTraced) {
  EventSink sink;
  sink.answer = E_FAIL;
  const auto point = EventsOf(*static_cast<_BVilnor*>(session_.get()));
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
  FHPExists();
  EXPECT_THAT(Texts(), Contains("UpdateJournal Noted SinkFailed"));
  point->Unadvise(cookie);
}

TEST_F(ListenedTo, NothingPersonalIsInTheEvents) {
  FHPExists();
  const BoxAnswerer boxes;
  long patient = 4711;
  TextArgument name(u"'kanarie'");
  session_->AddNewVilnorUser(&patient, name.Reference());
  const std::string bytes = Bytes();
  EXPECT_THAT(bytes, HasSubstr(Wide("AddNewVilnorUser")));
  for (const char* canary : {"kanarie", "driver", "hemlig", "4711", "xml", "\\"}) {
    EXPECT_THAT(bytes, Not(HasSubstr(canary)));
    EXPECT_THAT(bytes, Not(HasSubstr(Wide(canary))));
  }
}

}  // namespace
}  // namespace system_tests
