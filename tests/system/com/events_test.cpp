#include <array>
#include <gmock/gmock.h>

#include "com/wide_text.h"
#include "system/com/box_answerer.h"
#include "system/com/database.h"
#include "system/com/event_sink.h"
#include "system/com/host_registration.h"

namespace system_tests {
namespace {

using testing::Each;
using testing::SizeIs;

constexpr DISPID kUpdateJournal = 2;

class Events : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(session_);
    Init(*session_.get(), database_.ConnectionString());
    point_ = EventsOf(*session_.get());
    ASSERT_TRUE(point_);
  }

  // Raises UpdateJournal four times.
  void Raise() {
    long id = 5;
    VARIANT_BOOL exists = VARIANT_TRUE;
    EXPECT_EQ(session_->FHPExists(&id, &exists), S_OK);
  }

  TestDatabase database_;
  ComPtr<_BVilnor> session_ = NewBVilnor();
  ComPtr<IConnectionPoint> point_;
  BoxAnswerer boxes_;
};

TEST_F(Events, ConnectedSinkIsCalledOnTheCallingThread) {
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point_->Advise(&sink, &cookie), S_OK);
  Raise();
  EXPECT_THAT(sink.raised, SizeIs(4));
  EXPECT_THAT(sink.raised, Each(RaisedEvent{.id = kUpdateJournal, .thread = GetCurrentThreadId()}));
  EXPECT_THAT(boxes_.Texts(), testing::IsEmpty());
  EXPECT_EQ(point_->Unadvise(cookie), S_OK);
}

TEST_F(Events, DisconnectedSinkGetsNoEvents) {
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point_->Advise(&sink, &cookie), S_OK);
  ASSERT_EQ(point_->Unadvise(cookie), S_OK);
  EXPECT_EQ(sink.references(), 0U);
  Raise();
  EXPECT_THAT(sink.raised, SizeIs(0));
  EXPECT_EQ(point_->Unadvise(cookie), CONNECT_E_NOCONNECTION);
}

TEST_F(Events, EverySinkGetsEventsWhateverAnotherOneReturns) {
  EventSink failing;
  failing.answer = E_FAIL;
  EventSink second;
  DWORD cookie = 0;
  DWORD secondCookie = 0;
  ASSERT_EQ(point_->Advise(&failing, &cookie), S_OK);
  ASSERT_EQ(point_->Advise(&second, &secondCookie), S_OK);
  EXPECT_NE(cookie, secondCookie);
  Raise();
  EXPECT_THAT(failing.raised, SizeIs(4));
  EXPECT_THAT(second.raised, SizeIs(4));
  point_->Unadvise(cookie);
  point_->Unadvise(secondCookie);
}

TEST_F(Events, SinkDisconnectingAtItsFirstEventGetsNoMore) {
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point_->Advise(&sink, &cookie), S_OK);
  sink.atEvent = [&] { point_->Unadvise(cookie); };
  Raise();
  EXPECT_THAT(sink.raised, SizeIs(1));
  EXPECT_EQ(sink.references(), 0U);
}

TEST_F(Events, SinkDisconnectedByAnotherSinkGetsNoMoreEvents) {
  EventSink first;
  EventSink second;
  DWORD cookie = 0;
  DWORD secondCookie = 0;
  ASSERT_EQ(point_->Advise(&first, &cookie), S_OK);
  ASSERT_EQ(point_->Advise(&second, &secondCookie), S_OK);
  first.atEvent = [&] { point_->Unadvise(secondCookie); };
  Raise();
  EXPECT_THAT(first.raised, SizeIs(4));
  EXPECT_THAT(second.raised, SizeIs(0));
  point_->Unadvise(cookie);
}

TEST_F(Events, SinkConnectedDuringAnEventGetsTheNextOne) {
  EventSink first;
  EventSink late;
  DWORD cookie = 0;
  DWORD lateCookie = 0;
  ASSERT_EQ(point_->Advise(&first, &cookie), S_OK);
  first.atEvent = [&] {
    if (lateCookie == 0) {
      point_->Advise(&late, &lateCookie);
    }
  };
  Raise();
  EXPECT_THAT(first.raised, SizeIs(4));
  EXPECT_THAT(late.raised, SizeIs(3));
  point_->Unadvise(cookie);
  point_->Unadvise(lateCookie);
}

TEST_F(Events, SessionMayBeReleasedInAnEvent) {
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point_->Advise(&sink, &cookie), S_OK);
  point_ = {};
  _BVilnor* const session = session_.get();
  sink.atEvent = [&] { session_ = {}; };
  long id = 5;
  VARIANT_BOOL exists = VARIANT_TRUE;
  EXPECT_EQ(session->FHPExists(&id, &exists), S_OK);
  EXPECT_THAT(sink.raised, SizeIs(4));
  EXPECT_EQ(exists, VARIANT_FALSE);
  // The session ended with the call: its connection and its window are gone.
  EXPECT_EQ(sink.references(), 0U);
  EXPECT_EQ(NotificationWindows(), 0);
}

TEST_F(Events, OneEventIsRaisedWhenTheDatabaseCannotBeOpened) {
  Init(*session_.get(), u"Driver=There is no such driver");
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point_->Advise(&sink, &cookie), S_OK);
  Raise();
  EXPECT_THAT(sink.raised, SizeIs(1));
  EXPECT_THAT(boxes_.Texts(), testing::ElementsAre(testing::EndsWith(L" in FHPExists")));
  point_->Unadvise(cookie);
}

TEST_F(Events, TwoEventsAreRaisedWhenTheQueryFails) {
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point_->Advise(&sink, &cookie), S_OK);
  sink.atEvent = [&] {
    if (sink.raised.size() == 2) {
      database_.Execute(u"DROP TABLE Vilnor");
    }
  };
  Raise();
  EXPECT_THAT(sink.raised, SizeIs(2));
  EXPECT_THAT(boxes_.Texts(), testing::ElementsAre(testing::EndsWith(L" in CaseExists")));
  // The connection was released: the next call gets just as far.
  Raise();
  EXPECT_THAT(sink.raised, SizeIs(4));
  EXPECT_THAT(boxes_.Texts(), testing::ElementsAre(testing::EndsWith(L" in CaseExists"),
                                                   testing::EndsWith(L" in CaseExists")));
  point_->Unadvise(cookie);
}

TEST_F(Events, CloseVilnorIsNeverRaised) {
  const HostRegistration host;
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point_->Advise(&sink, &cookie), S_OK);
  long key = 101;
  long pid = 4712;
  long bid = 12;
  long rid = 3;
  short number = 1;
  short databaseType = 2;
  VARIANT_BOOL answer = VARIANT_FALSE;
  TextArgument connection(database_.ConnectionString());
  TextArgument text(u"anna");
  TextArgument message(u"");
  const Bstr folder(com::FromWide(host.ExchangeFolder().wstring()));
  Bstr path;
  Bstr user;
  _BVilnor& session = *session_.get();
  const std::array<HRESULT, 17> results = {
      session.InitVilnor(connection.Reference(), &number, &databaseType),
      session.OpenExistCase(&key),
      session.OpenExistFHP(&key),
      session.OpenSearchPatient(&pid),
      session.OpenWithNewCase(&pid, &bid, &rid),
      session.OpenWithNewFHP(&pid, &bid, &rid, &key),
      session.OpenVilnor(),
      session.ReadNewFHP(&key),
      session.ReadExistCase(&key),
      session.FHPExists(&key, &answer),
      session.WriteNewCase(&pid, &bid, &rid, text.Reference(), text.Reference(), text.Reference(),
                           folder.get(), path.Receive()),
      session.ReadNewCase(&pid),
      session.AddNewVilnorUser(&pid, text.Reference()),
      session.UpdateVilnorUser(&pid, text.Reference()),
      session.DeleteVilnorUser(&pid),
      session.GetVilnorUserByPID(&pid, user.Receive()),
      session.OKToSend(&key, &number, message.Reference(), &answer)};
  EXPECT_THAT(results, Each(S_OK));
  EXPECT_THAT(sink.raised, testing::Not(testing::IsEmpty()));
  EXPECT_THAT(sink.raised, Each(testing::Field(&RaisedEvent::id, kUpdateJournal)));
  point_->Unadvise(cookie);
}

TEST_F(Events, SinkWithoutTheEventInterfaceIsRefused) {
  const auto other = NewBVilnor();
  DWORD cookie = 99;
  EXPECT_EQ(point_->Advise(other.get(), &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0U);
  EXPECT_EQ(point_->Advise(nullptr, &cookie), E_POINTER);
}

TEST_F(Events, ConnectionPointGivesItsContainer) {
  IID interfaceId = {};
  EXPECT_EQ(point_->GetConnectionInterface(&interfaceId), S_OK);
  EXPECT_TRUE(interfaceId == DIID___BVilnor);
  ComPtr<IConnectionPointContainer> container;
  ASSERT_EQ(point_->GetConnectionPointContainer(container.Receive()), S_OK);
  ComPtr<IUnknown> identity;
  ComPtr<IUnknown> session;
  container->QueryInterface(IID_IUnknown, identity.ReceiveVoid());
  session_->QueryInterface(IID_IUnknown, session.ReceiveVoid());
  EXPECT_EQ(identity.get(), session.get());
  ComPtr<IConnectionPoint> none;
  EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, none.Receive()), CONNECT_E_NOCONNECTION);
}

TEST_F(Events, OnlyConnectionPointIsEnumerated) {
  ComPtr<IConnectionPointContainer> container;
  session_->QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid());
  ASSERT_TRUE(container);
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(points.Receive()), S_OK);
  ComPtr<IConnectionPoint> first;
  ULONG count = 0;
  EXPECT_EQ(points->Next(1, first.Receive(), &count), S_OK);
  EXPECT_EQ(first.get(), point_.get());
  EXPECT_EQ(points->Next(1, first.Receive(), &count), S_FALSE);
  EXPECT_EQ(count, 0U);
}

TEST_F(Events, ConnectionsAreEnumeratedAsASnapshot) {
  std::array<EventSink, 3> sinks;
  std::array<DWORD, 3> cookies{};
  for (std::size_t i = 0; i < sinks.size(); ++i) {
    ASSERT_EQ(point_->Advise(&sinks[i], &cookies[i]), S_OK);
  }
  {
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point_->EnumConnections(connections.Receive()), S_OK);
    point_->Unadvise(cookies[0]);
    EXPECT_EQ(connections->Skip(1), S_OK);
    ComPtr<IEnumConnections> clone;
    ASSERT_EQ(connections->Clone(clone.Receive()), S_OK);
    std::array<CONNECTDATA, 3> data{};
    ULONG count = 0;
    EXPECT_EQ(connections->Next(3, data.data(), &count), S_FALSE);
    ASSERT_EQ(count, 2U);
    EXPECT_EQ(data[0].dwCookie, cookies[1]);
    EXPECT_EQ(data[0].pUnk, static_cast<IUnknown*>(&sinks[1]));
    EXPECT_EQ(data[1].dwCookie, cookies[2]);
    data[0].pUnk->Release();
    data[1].pUnk->Release();
    EXPECT_EQ(connections->Skip(1), S_FALSE);
    EXPECT_EQ(clone->Next(1, data.data(), nullptr), S_OK);
    EXPECT_EQ(data[0].dwCookie, cookies[1]);
    data[0].pUnk->Release();
    EXPECT_EQ(connections->Reset(), S_OK);
    EXPECT_EQ(connections->Next(2, data.data(), nullptr), E_POINTER);
    EXPECT_EQ(connections->Next(1, data.data(), &count), S_OK);
    EXPECT_EQ(data[0].dwCookie, cookies[0]);
    data[0].pUnk->Release();
  }
  point_->Unadvise(cookies[1]);
  point_->Unadvise(cookies[2]);
  for (const auto& sink : sinks) {
    EXPECT_EQ(sink.references(), 0U);
  }
}

}  // namespace
}  // namespace system_tests
