// What hosts were built against: names, slots, ids and types of the type library in the DLL.
#include <gmock/gmock.h>

#include "describe/type_signatures.h"
#include "system/com/component.h"

namespace system_tests {
namespace {

using description::InterfacesOf;
using description::Signatures;
using testing::ElementsAre;

class TypeLibrary : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_HRESULT_SUCCEEDED(LoadTypeLibEx(DllPath().c_str(), REGKIND_NONE, library_.Receive()));
  }

  ComPtr<ITypeInfo> Info(REFGUID identifier) const {
    ComPtr<ITypeInfo> info;
    EXPECT_HRESULT_SUCCEEDED(library_->GetTypeInfoOfGuid(identifier, info.Receive()));
    return info;
  }

  ComPtr<ITypeInfo> Vtable(REFGUID identifier) const {
    return description::VtableOf(*Info(identifier).get());
  }

  ComPtr<ITypeLib> library_;
};

TEST_F(TypeLibrary, LibraryIsVilnor15InEnglish) {
  TLIBATTR* attributes = nullptr;
  ASSERT_HRESULT_SUCCEEDED(library_->GetLibAttr(&attributes));
  EXPECT_TRUE(attributes->guid == LIBID_Vilnor);
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 5);
  EXPECT_EQ(attributes->lcid, 0x409U);
  library_->ReleaseTLibAttr(attributes);
  Bstr name;
  library_->GetDocumentation(-1, name.Receive(), nullptr, nullptr, nullptr);
  EXPECT_EQ(name.Text(), u"Vilnor");
}

TEST_F(TypeLibrary, OperationsOfBVilnorHaveTheirSlots) {
  EXPECT_THAT(
      Signatures(*Vtable(IID__BVilnor).get()),
      ElementsAre(
          "7 60030000 InitVilnor(inout BSTR* ConnectionParameter, inout I2* KestraLangID, "
          "inout I2* dbType)",
          "8 60030001 OpenExistCase(inout I4* VilnorId)",
          "9 60030002 OpenExistFHP(inout I4* FHPId)",
          "10 60030003 OpenSearchPatient(inout I4* PID)",
          "11 60030004 OpenWithNewCase(inout I4* PID, inout I4* BID, inout I4* RID)",
          "12 60030005 OpenWithNewFHP(inout I4* PID, inout I4* BID, inout I4* RID, "
          "inout I4* FHPId)",
          "13 60030006 OpenVilnor()", "14 60030007 ReadNewFHP(inout I4* FHPId)",
          "15 60030008 ReadExistCase(inout I4* VilnorId)",
          "16 60030009 FHPExists(inout I4* FHPId, outret BOOL* result)",
          "17 6003000a WriteNewCase(inout I4* PID, inout I4* BID, inout I4* RID, inout BSTR* SSN, "
          "inout BSTR* FirstName, inout BSTR* LastName, in BSTR VilnorOutputPath, "
          "outret BSTR* result)",
          "18 6003000b ReadNewCase(inout I4* PID)",
          "19 6003000c AddNewVilnorUser(inout I4* PID, inout BSTR* UserName)",
          "20 6003000d UpdateVilnorUser(inout I4* PID, inout BSTR* UserName)",
          "21 6003000e DeleteVilnorUser(inout I4* PID)",
          "22 6003000f GetVilnorUserByPID(inout I4* PID, outret BSTR* result)",
          "23 60030010 OKToSend(inout I4* FHPId, inout I2* ErrCode, inout BSTR* ErrMsg, "
          "outret BOOL* result)"));
}

TEST_F(TypeLibrary, OperationsOfDBVilnorHaveTheirSlots) {
  EXPECT_THAT(
      Signatures(*Vtable(IID__DBVilnor).get()),
      ElementsAre(
          "7 60030000 InitConnection()", "8 60030001 DeleteFHP(inout I4* FHPId)",
          "9 60030002 DeleteCase(inout BSTR* CaseId)",
          "10 60030003 GetCaseIdByVilnorId(inout I4* VilnorId, outret BSTR* result)",
          "11 60030004 CaseExists(inout I4* FHPId, inout I4* CaseTypeId, outret BOOL* result)",
          "12 60030005 CaseExistsPID(inout I4* PID, inout I4* CaseTypeId, inout BSTR* CaseId, "
          "outret BOOL* result)",
          "13 60030006 GetFHPById(inout I4* FHPId, outret IDispatch** result)",
          "14 60030007 GetVilnorIdByFHPId(inout I4* FHPId, outret I4* result)",
          "15 60030008 GetBIDById(inout I4* BID, outret IDispatch** result)",
          "16 60030009 GetRIDById(inout I4* RID, outret IDispatch** result)",
          "17 6003000a GetPIDById(inout I4* PID, outret IDispatch** result)",
          "18 6003000b GetCityByPostnr(inout I4* Postnr, outret BSTR* result)",
          "19 6003000c PreRequestCostExists(inout I4* FHPId, outret BOOL* result)",
          "20 6003000d GetPreRequestCostByFHPid(inout I4* FHPId, outret IDispatch** result)",
          "21 6003000e AddNewCase(inout I4* PID, inout I4* BID, inout I4* RID, inout BSTR* CaseId, "
          "inout I4* FHP_ID, inout I4* CaseTypeId, inout I4* StatusCode, inout BSTR* VilnorUser, "
          "inoutopt BSTR* KestraCaseId)",
          "22 6003000f UpdateCaseById(inout I4* VilnorId, inout BSTR* CaseId, "
          "inout I4* CaseStatus)",
          "23 60030010 UpdateCase(inout BSTR* CaseId, inout I4* KestraId, inout I4* CaseStatus, "
          "inout I4* CaseTypeId)",
          "24 60030011 GetPatientByPID(inout I4* PID, outret IDispatch** result)",
          "25 60030012 GetPatientSSNByPID(inout I4* PID, outret IDispatch** result)",
          "26 60030013 AddNewVilnorUser(inout I4* PID, inout BSTR* UserName)",
          "27 60030014 UpdateVilnorUser(inout I4* PID, inout BSTR* UserName)",
          "28 60030015 DeleteVilnorUser(inout I4* PID)",
          "29 60030016 GetVilnorUserByPID(inout I4* PID, outret BSTR* result)",
          "30 60030017 GetVilnorUserByCode1(inout I4* Code1, outret BSTR* result)"));
}

TEST_F(TypeLibrary, EventsHaveTheirDispIds) {
  EXPECT_THAT(Signatures(*Info(DIID___BVilnor).get()),
              ElementsAre("0 1 CloseVilnor()", "0 2 UpdateJournal()"));
}

TEST_F(TypeLibrary, BothClassesHaveTheirDefaultInterfaces) {
  const std::string defaultFlag = std::to_string(IMPLTYPEFLAG_FDEFAULT);
  const std::string defaultSource = std::to_string(IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
  EXPECT_THAT(InterfacesOf(*Info(CLSID_BVilnor).get()),
              ElementsAre(defaultFlag + " _BVilnor", defaultSource + " __BVilnor"));
  EXPECT_THAT(InterfacesOf(*Info(CLSID_DBVilnor).get()), ElementsAre(defaultFlag + " _DBVilnor"));
}

TEST_F(TypeLibrary, OmittedCaseNumberDefaultsToEmptyText) {
  constexpr UINT kAddNewCase = 14;
  constexpr std::size_t kKestraCaseId = 8;
  const ComPtr<ITypeInfo> info = Vtable(IID__DBVilnor);
  FUNCDESC* function = nullptr;
  ASSERT_HRESULT_SUCCEEDED(info->GetFuncDesc(kAddNewCase, &function));
  const PARAMDESC& parameter = function->lprgelemdescParam[kKestraCaseId].paramdesc;
  ASSERT_NE(parameter.wParamFlags & PARAMFLAG_FHASDEFAULT, 0);
  EXPECT_EQ(V_VT(&parameter.pparamdescex->varDefaultValue), VT_BSTR);
  EXPECT_EQ(SysStringLen(V_BSTR(&parameter.pparamdescex->varDefaultValue)), 0U);
  info->ReleaseFuncDesc(function);
}

}  // namespace
}  // namespace system_tests
