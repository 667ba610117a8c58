#include <gmock/gmock.h>

#include "system/com/component.h"

namespace system_tests {
namespace {

template <class Interface>
ComPtr<Interface> As(IUnknown& object, const IID& interfaceId) {
  ComPtr<Interface> found;
  object.QueryInterface(interfaceId, found.ReceiveVoid());
  return found;
}

TEST(Creation, NewObjectHasOneIdentity) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  const auto identity = As<IUnknown>(*session.get(), IID_IUnknown);
  for (const IID& interfaceId :
       {IID_IDispatch, IID__BVilnor, IID_IConnectionPointContainer, IID_ISupportErrorInfo,
        IID_IProvideClassInfo, IID_IProvideClassInfo2}) {
    const auto other = As<IUnknown>(*session.get(), interfaceId);
    ASSERT_TRUE(other);
    EXPECT_EQ(As<IUnknown>(*other.get(), IID_IUnknown).get(), identity.get());
  }
}

TEST(Creation, UnknownInterfaceIsNotSupported) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  IUnknown* found = session.get();
  EXPECT_EQ(session->QueryInterface(IID_IPersist, reinterpret_cast<void**>(&found)), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(session->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(Creation, AggregationIsRefused) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  ComPtr<IUnknown> inner;
  EXPECT_EQ(CoCreateInstance(CLSID_BVilnor, session.get(), CLSCTX_INPROC_SERVER, IID_IUnknown,
                             inner.ReceiveVoid()),
            CLASS_E_NOAGGREGATION);
  EXPECT_FALSE(inner);
}

TEST(Creation, OnlyTheTwoClassesHaveFactories) {
  const Module component(DllPath());
  ComPtr<IUnknown> factory;
  EXPECT_EQ(component.GetClassObject(LIBID_Vilnor, IID_IClassFactory, factory.ReceiveVoid()),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(component.GetClassObject(CLSID_DBVilnor, IID_IClassFactory, factory.ReceiveVoid()),
            S_OK);
}

TEST(Creation, EachSessionHasAHiddenWindowUntilItIsReleased) {
  ASSERT_EQ(NotificationWindows(), 0);
  for (int i = 0; i < 3; ++i) {
    const auto session = NewBVilnor();
    ASSERT_TRUE(session);
    EXPECT_EQ(NotificationWindows(), 1);
    EXPECT_EQ(IsWindowVisible(FindWindowA("KestraToVilnor", "VB Window")), FALSE);
  }
  EXPECT_EQ(NotificationWindows(), 0);
}

TEST(Creation, ObjectGivesItsClassAndEventInterface) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  const auto description = As<IProvideClassInfo2>(*session.get(), IID_IProvideClassInfo2);
  ASSERT_TRUE(description);
  ComPtr<ITypeInfo> classInfo;
  ASSERT_EQ(description->GetClassInfo(classInfo.Receive()), S_OK);
  TYPEATTR* attributes = nullptr;
  classInfo->GetTypeAttr(&attributes);
  EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
  EXPECT_TRUE(attributes->guid == CLSID_BVilnor);
  classInfo->ReleaseTypeAttr(attributes);
  GUID events = {};
  EXPECT_EQ(description->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
  EXPECT_TRUE(events == DIID___BVilnor);
  EXPECT_EQ(description->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID + 1, &events), E_INVALIDARG);
}

TEST(Creation, ErrorInformationIsSupportedOnTheOwnInterface) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  const auto support = As<ISupportErrorInfo>(*session.get(), IID_ISupportErrorInfo);
  ASSERT_TRUE(support);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID__BVilnor), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID__DBVilnor), S_FALSE);
}

}  // namespace
}  // namespace system_tests
