// ADO's Recordset.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ado_dll/connection_object.h"
#include "ado_dll/unsupported_recordset.h"
#include "automation/value.h"
#include "odbc/ado_recordset.h"

namespace ado_dll {

class RecordsetObject : public UnsupportedRecordset {
 public:
  // Closed.
  RecordsetObject() = default;
  // Open, with its connection and source.
  RecordsetObject(odbc::AdoRecordset ado, com::ComPtr<ConnectionObject> connection,
                  std::u16string source);

  odbc::AdoRecordset& Ado() { return ado_; }
  // The column with this name or zero-based number. Error 3265 if there is none.
  std::size_t ColumnAt(const VARIANT& nameOrNumber);

  // By the type library the default member, Fields, is read-only; a script's rs("name") = value
  // goes to Collect.
  HRESULT InvokeBy(ITypeInfo& description, DISPID member, WORD flags, DISPPARAMS& arguments,
                   VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;
  HRESULT STDMETHODCALLTYPE get_AbsolutePosition(PositionEnum_Param* position) override;
  HRESULT STDMETHODCALLTYPE put_AbsolutePosition(PositionEnum_Param position) override;
  HRESULT STDMETHODCALLTYPE putref_ActiveConnection(IDispatch* connection) override;
  HRESULT STDMETHODCALLTYPE put_ActiveConnection(VARIANT connection) override;
  HRESULT STDMETHODCALLTYPE get_ActiveConnection(VARIANT* connection) override;
  HRESULT STDMETHODCALLTYPE get_BOF(VARIANT_BOOL* bof) override;
  HRESULT STDMETHODCALLTYPE get_EOF(VARIANT_BOOL* eof) override;
  HRESULT STDMETHODCALLTYPE get_Bookmark(VARIANT* bookmark) override;
  HRESULT STDMETHODCALLTYPE put_Bookmark(VARIANT bookmark) override;
  HRESULT STDMETHODCALLTYPE get_CursorLocation(CursorLocationEnum* location) override;
  HRESULT STDMETHODCALLTYPE put_CursorLocation(CursorLocationEnum location) override;
  HRESULT STDMETHODCALLTYPE get_CursorType(CursorTypeEnum* cursorType) override;
  HRESULT STDMETHODCALLTYPE put_CursorType(CursorTypeEnum cursorType) override;
  HRESULT STDMETHODCALLTYPE get_LockType(LockTypeEnum* lockType) override;
  HRESULT STDMETHODCALLTYPE put_LockType(LockTypeEnum lockType) override;
  HRESULT STDMETHODCALLTYPE get_Fields(Fields** object) override;
  HRESULT STDMETHODCALLTYPE get_Collect(VARIANT index, VARIANT* value) override;
  HRESULT STDMETHODCALLTYPE put_Collect(VARIANT index, VARIANT value) override;
  HRESULT STDMETHODCALLTYPE GetRows(LONG rows, VARIANT start, VARIANT fields,
                                    VARIANT* table) override;
  HRESULT STDMETHODCALLTYPE get_RecordCount(ADO_LONGPTR* count) override;
  HRESULT STDMETHODCALLTYPE get_State(LONG* state) override;
  HRESULT STDMETHODCALLTYPE get_EditMode(EditModeEnum* mode) override;
  HRESULT STDMETHODCALLTYPE get_Source(VARIANT* source) override;
  HRESULT STDMETHODCALLTYPE put_Source(BSTR source) override;
  HRESULT STDMETHODCALLTYPE MoveNext() override;
  HRESULT STDMETHODCALLTYPE MovePrevious() override;
  HRESULT STDMETHODCALLTYPE MoveFirst() override;
  HRESULT STDMETHODCALLTYPE MoveLast() override;
  HRESULT STDMETHODCALLTYPE Open(VARIANT source, VARIANT activeConnection,
                                 CursorTypeEnum cursorType, LockTypeEnum lockType,
                                 LONG options) override;
  HRESULT STDMETHODCALLTYPE Close() override;
  HRESULT STDMETHODCALLTYPE Update(VARIANT fields, VARIANT values) override;
  HRESULT STDMETHODCALLTYPE CancelUpdate() override;
  HRESULT STDMETHODCALLTYPE Clone(LockTypeEnum lockType, _Recordset** clone) override;

 private:
  void RequireClosed() const;
  // The columns with these names or numbers: an array, a single one, or all if omitted.
  std::vector<std::size_t> ColumnsAt(const VARIANT& namesOrNumbers);
  // Takes a Connection, or a connection string, for which it opens one.
  void UseConnection(const VARIANT& connection);

  odbc::AdoRecordset ado_;
  com::ComPtr<ConnectionObject> connection_;
  std::u16string source_;
  // Used by Open if its arguments omit them.
  odbc::CursorType cursorType_ = odbc::CursorType::ForwardOnly;
  odbc::LockType lockType_ = odbc::LockType::ReadOnly;
};

}  // namespace ado_dll
