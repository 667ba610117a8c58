// What hosts were built against: names, slots, ids and types of the type library inside the DLL.
#include <gmock/gmock.h>
#include <map>
#include <sstream>

#include "system/com/component.h"

namespace system_tests {
namespace {

using testing::ElementsAre;

std::string Narrow(const Bstr& text) {
  const std::u16string wide = text.Text();
  return {wide.begin(), wide.end()};
}

std::string TypeName(const TYPEDESC& type) {
  static const std::map<VARTYPE, std::string> names = {
      {VT_I2, "I2"},          {VT_I4, "I4"},     {VT_BSTR, "BSTR"},
      {VT_BOOL, "BOOL"},      {VT_VOID, "void"}, {VT_DISPATCH, "IDispatch*"},
      {VT_HRESULT, "HRESULT"}};
  if (type.vt == VT_PTR) {
    return TypeName(*type.lptdesc) + "*";
  }
  const auto found = names.find(type.vt);
  return found == names.end() ? "type " + std::to_string(type.vt) : found->second;
}

std::string Direction(USHORT flags) {
  std::string text;
  text += (flags & PARAMFLAG_FIN) != 0 ? "in" : "";
  text += (flags & PARAMFLAG_FOUT) != 0 ? "out" : "";
  text += (flags & PARAMFLAG_FRETVAL) != 0 ? "ret" : "";
  text += (flags & PARAMFLAG_FOPT) != 0 ? "opt" : "";
  return text;
}

// "SLOT ID Name(direction TYPE argument, ...)", the slot in the vtable and the id in hex.
std::string Signature(ITypeInfo& info, const FUNCDESC& function) {
  std::vector<BSTR> raw(static_cast<std::size_t>(function.cParams) + 1);
  UINT count = 0;
  info.GetNames(function.memid, raw.data(), static_cast<UINT>(raw.size()), &count);
  std::vector<Bstr> names(raw.size());
  for (std::size_t i = 0; i < count; ++i) {
    *names[i].Receive() = raw[i];
  }
  std::ostringstream text;
  text << function.oVft / static_cast<int>(sizeof(void*)) << ' ' << std::hex << function.memid
       << ' ' << Narrow(names.front()) << '(';
  for (SHORT i = 0; i < function.cParams; ++i) {
    const ELEMDESC& parameter = function.lprgelemdescParam[i];
    text << (i == 0 ? "" : ", ") << Direction(parameter.paramdesc.wParamFlags) << ' '
         << TypeName(parameter.tdesc) << ' ' << Narrow(names[static_cast<std::size_t>(i) + 1]);
  }
  text << ')';
  return text.str();
}

std::vector<std::string> Signatures(ITypeInfo& info) {
  TYPEATTR* attributes = nullptr;
  EXPECT_HRESULT_SUCCEEDED(info.GetTypeAttr(&attributes));
  const UINT functions = attributes->cFuncs;
  info.ReleaseTypeAttr(attributes);
  std::vector<std::string> signatures;
  for (UINT i = 0; i < functions; ++i) {
    FUNCDESC* function = nullptr;
    EXPECT_HRESULT_SUCCEEDED(info.GetFuncDesc(i, &function));
    signatures.push_back(Signature(info, *function));
    info.ReleaseFuncDesc(function);
  }
  return signatures;
}

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

  // The vtable's view of a dual interface.
  ComPtr<ITypeInfo> Vtable(REFGUID identifier) const {
    constexpr UINT kVtableOfDual = static_cast<UINT>(-1);
    const ComPtr<ITypeInfo> dispatch = Info(identifier);
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> vtable;
    EXPECT_HRESULT_SUCCEEDED(dispatch->GetRefTypeOfImplType(kVtableOfDual, &reference));
    EXPECT_HRESULT_SUCCEEDED(dispatch->GetRefTypeInfo(reference, vtable.Receive()));
    return vtable;
  }

  // "[flags] Name" of each interface of a class.
  std::vector<std::string> InterfacesOf(REFGUID classId) const {
    const ComPtr<ITypeInfo> info = Info(classId);
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    const UINT count = attributes->cImplTypes;
    info->ReleaseTypeAttr(attributes);
    std::vector<std::string> interfaces;
    for (UINT i = 0; i < count; ++i) {
      INT flags = 0;
      HREFTYPE reference = 0;
      ComPtr<ITypeInfo> implemented;
      Bstr name;
      info->GetImplTypeFlags(i, &flags);
      info->GetRefTypeOfImplType(i, &reference);
      info->GetRefTypeInfo(reference, implemented.Receive());
      implemented->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr);
      interfaces.push_back(std::to_string(flags) + " " + Narrow(name));
    }
    return interfaces;
  }

  ComPtr<ITypeLib> library_;
};

TEST_F(TypeLibrary, IsVilnor15InEnglish) {
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

TEST_F(TypeLibrary, HoldsTheOperationsOfBVilnorInTheirSlots) {
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

TEST_F(TypeLibrary, HoldsTheOperationsOfDBVilnorInTheirSlots) {
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

TEST_F(TypeLibrary, HoldsTheEventsUnderTheirIds) {
  EXPECT_THAT(Signatures(*Info(DIID___BVilnor).get()),
              ElementsAre("0 1 CloseVilnor()", "0 2 UpdateJournal()"));
}

TEST_F(TypeLibrary, NamesTheDefaultInterfacesOfBothClasses) {
  const std::string defaultFlag = std::to_string(IMPLTYPEFLAG_FDEFAULT);
  const std::string defaultSource = std::to_string(IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
  EXPECT_THAT(InterfacesOf(CLSID_BVilnor),
              ElementsAre(defaultFlag + " _BVilnor", defaultSource + " __BVilnor"));
  EXPECT_THAT(InterfacesOf(CLSID_DBVilnor), ElementsAre(defaultFlag + " _DBVilnor"));
}

TEST_F(TypeLibrary, GivesAnOmittedCaseNumberAsAnEmptyText) {
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
