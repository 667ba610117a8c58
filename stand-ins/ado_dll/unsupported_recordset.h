// The members of ADO's _Recordset that this ADO does not implement: each raises ADO's 3251 "Object
// or provider is not capable of performing requested operation.".
#pragma once

#include "ado_dll/arguments.h"
#include "ado_dll/interfaces.h"

namespace ado_dll {

class UnsupportedRecordset : public com::DualObject<_Recordset> {
 public:
  HRESULT STDMETHODCALLTYPE Move(ADO_LONGPTR, VARIANT) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Properties(Properties**) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_CacheSize(LONG*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_CacheSize(LONG) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_MaxRecords(ADO_LONGPTR*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_MaxRecords(ADO_LONGPTR) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE putref_Source(IDispatch*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE AddNew(VARIANT, VARIANT) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE Delete(AffectEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE Requery(LONG) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE _xResync(AffectEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_AbsolutePage(PositionEnum_Param*) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE put_AbsolutePage(PositionEnum_Param) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Filter(VARIANT*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Filter(VARIANT) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_PageCount(ADO_LONGPTR*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_PageSize(LONG*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_PageSize(LONG) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Sort(BSTR*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Sort(BSTR) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Status(LONG*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE _xClone(_Recordset**) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE UpdateBatch(AffectEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE CancelBatch(AffectEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE NextRecordset(VARIANT*, _Recordset**) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE Supports(CursorOptionEnum, VARIANT_BOOL*) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE get_MarshalOptions(MarshalOptionsEnum*) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE put_MarshalOptions(MarshalOptionsEnum) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE Find(BSTR, LONG, SearchDirectionEnum, VARIANT) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE Cancel() override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_DataSource(IUnknown**) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE putref_DataSource(IUnknown*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE _xSave(BSTR, PersistFormatEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_ActiveCommand(IDispatch**) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_StayInSync(VARIANT_BOOL) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_StayInSync(VARIANT_BOOL*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE GetString(StringFormatEnum, LONG, BSTR, BSTR, BSTR, BSTR*) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE get_DataMember(BSTR*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_DataMember(BSTR) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE CompareBookmarks(VARIANT, VARIANT, CompareEnum*) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE Resync(AffectEnum, ResyncEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE Seek(VARIANT, SeekEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Index(BSTR) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Index(BSTR*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE Save(VARIANT, PersistFormatEnum) override { return NotSupported(); }
};

}  // namespace ado_dll
