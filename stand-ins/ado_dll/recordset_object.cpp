#include "ado_dll/recordset_object.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <utility>

#include "ado_dll/arguments.h"
#include "ado_dll/fields_object.h"
#include "automation/conversion.h"
#include "com/bstr.h"
#include "com/com_error.h"
#include "com/variant.h"
#include "com/variant_array.h"
#include "odbc/ado_error.h"

namespace ado_dll {
namespace {

// adGetRowsRest.
constexpr LONG kRestOfRows = -1;

std::int32_t ToNumber(const VARIANT& variant) {
  return automation::ToInt32(com::ToValue(variant), automation::Regional());
}

}  // namespace

RecordsetObject::RecordsetObject(odbc::AdoRecordset ado, com::ComPtr<ConnectionObject> connection,
                                 std::u16string source)
    : ado_(std::move(ado)), connection_(std::move(connection)), source_(std::move(source)) {}

void RecordsetObject::RequireClosed() const {
  if (ado_.IsOpen()) {
    throw odbc::MakeError(odbc::AdoError::ObjectOpen, odbc::kRecordsetSource);
  }
}

std::size_t RecordsetObject::ColumnAt(const VARIANT& nameOrNumber) {
  const auto key = com::ToValue(nameOrNumber);
  if (key.Is<std::u16string>()) {
    return ado_.IndexOf(key.As<std::u16string>());
  }
  // A negative index is as invalid as one past the end.
  const auto index = static_cast<std::size_t>(ToNumber(nameOrNumber));
  if (index >= ado_.Columns().size()) {
    throw odbc::MakeError(odbc::AdoError::ItemNotFound, odbc::kRecordsetSource);
  }
  return index;
}

HRESULT RecordsetObject::InvokeBy(ITypeInfo& description, DISPID member, WORD flags,
                                  DISPPARAMS& arguments, VARIANT* result, EXCEPINFO* exception,
                                  UINT* argumentError) {
  constexpr UINT kNameAndValue = 2;
  const bool writesField = member == DISPID_VALUE && (flags & DISPATCH_PROPERTYPUT) != 0 &&
                           arguments.cArgs == kNameAndValue;
  return UnsupportedRecordset::InvokeBy(description, writesField ? DISPID_COLLECT : member, flags,
                                        arguments, result, exception, argumentError);
}

HRESULT RecordsetObject::get_AbsolutePosition(PositionEnum_Param* position) {
  return Call([&] {
    if (ado_.Eof()) {
      Out(position) = adPosEOF;
    } else if (ado_.Bof()) {
      Out(position) = adPosBOF;
    } else {
      Out(position) = static_cast<PositionEnum_Param>(ado_.Position() + 1);
    }
  });
}

HRESULT RecordsetObject::put_AbsolutePosition(PositionEnum_Param position) {
  return Call([&] { ado_.MoveTo(static_cast<std::size_t>(position) - 1); });
}

HRESULT RecordsetObject::putref_ActiveConnection(IDispatch* connection) {
  return Call([&] {
    RequireClosed();
    connection_ = connection == nullptr ? com::ComPtr<ConnectionObject>()
                                        : ConnectionObject::From(connection);
  });
}

HRESULT RecordsetObject::put_ActiveConnection(VARIANT connection) {
  return Call([&] {
    RequireClosed();
    UseConnection(connection);
  });
}

HRESULT RecordsetObject::get_ActiveConnection(VARIANT* connection) {
  return Call([&] {
    VARIANT& variant = Out(connection);
    VariantInit(&variant);
    if (connection_) {
      V_DISPATCH(&variant) = com::ComPtr<ConnectionObject>(connection_).Detach();
      V_VT(&variant) = VT_DISPATCH;
    }
  });
}

void RecordsetObject::UseConnection(const VARIANT& connection) {
  com::Variant copy;
  if (FAILED(VariantCopyInd(copy.Receive(), const_cast<VARIANT*>(&connection)))) {
    throw odbc::MakeError(odbc::AdoError::WrongArguments, odbc::kRecordsetSource);
  }
  const VARIANT& plain = copy.get();
  if (V_VT(&plain) == VT_BSTR) {
    auto opened = com::MakeObject<ConnectionObject>();
    opened->OpenOn(com::TextOf(V_BSTR(&plain)), u"", u"");
    connection_ = std::move(opened);
  } else if (V_VT(&plain) == VT_DISPATCH || V_VT(&plain) == VT_UNKNOWN) {
    connection_ = ConnectionObject::From(V_UNKNOWN(&plain));
  } else {
    throw odbc::MakeError(odbc::AdoError::WrongArguments, odbc::kRecordsetSource);
  }
}

HRESULT RecordsetObject::get_BOF(VARIANT_BOOL* bof) {
  return Call([&] { Out(bof) = FromBool(ado_.Bof()); });
}

HRESULT RecordsetObject::get_EOF(VARIANT_BOOL* eof) {
  return Call([&] { Out(eof) = FromBool(ado_.Eof()); });
}

HRESULT RecordsetObject::get_Bookmark(VARIANT* bookmark) {
  return Call([&] { Store(bookmark, static_cast<std::int32_t>(ado_.Position())); });
}

HRESULT RecordsetObject::put_Bookmark(VARIANT bookmark) {
  return Call([&] { ado_.MoveTo(static_cast<std::size_t>(ToNumber(bookmark))); });
}

HRESULT RecordsetObject::get_CursorLocation(CursorLocationEnum* location) {
  return Call([&] { Out(location) = static_cast<CursorLocationEnum>(ado_.CursorLocation()); });
}

HRESULT RecordsetObject::put_CursorLocation(CursorLocationEnum location) {
  return Call([&] { ado_.SetCursorLocation(static_cast<odbc::CursorLocation>(location)); });
}

HRESULT RecordsetObject::get_CursorType(CursorTypeEnum* cursorType) {
  return Call([&] {
    Out(cursorType) = static_cast<CursorTypeEnum>(ado_.IsOpen() ? ado_.CursorType() : cursorType_);
  });
}

HRESULT RecordsetObject::put_CursorType(CursorTypeEnum cursorType) {
  return Call([&] {
    RequireClosed();
    cursorType_ = static_cast<odbc::CursorType>(cursorType);
  });
}

HRESULT RecordsetObject::get_LockType(LockTypeEnum* lockType) {
  return Call([&] {
    Out(lockType) = static_cast<LockTypeEnum>(ado_.IsOpen() ? ado_.LockType() : lockType_);
  });
}

HRESULT RecordsetObject::put_LockType(LockTypeEnum lockType) {
  return Call([&] {
    RequireClosed();
    lockType_ = static_cast<odbc::LockType>(lockType);
  });
}

HRESULT RecordsetObject::get_Fields(Fields** object) {
  return Call([&] { Out(object) = com::MakeObject<FieldsObject>(com::ComPtr(this)).Detach(); });
}

HRESULT RecordsetObject::get_Collect(VARIANT index, VARIANT* value) {
  return Call([&] { Store(value, ado_.Field(ColumnAt(index))); });
}

HRESULT RecordsetObject::put_Collect(VARIANT index, VARIANT value) {
  return Call([&] { ado_.SetField(ColumnAt(index), com::ToValue(value)); });
}

std::vector<std::size_t> RecordsetObject::ColumnsAt(const VARIANT& namesOrNumbers) {
  std::vector<std::size_t> columns;
  com::Variant copy;
  com::Check(VariantCopyInd(copy.Receive(), const_cast<VARIANT*>(&namesOrNumbers)));
  if (IsMissing(copy.get())) {
    columns.resize(ado_.Columns().size());
    std::iota(columns.begin(), columns.end(), std::size_t{0});
  } else if ((V_VT(&copy.get()) & VT_ARRAY) == 0) {
    columns.push_back(ColumnAt(copy.get()));
  } else {
    const com::Elements elements(copy.get());
    std::transform(elements.begin(), elements.end(), std::back_inserter(columns),
                   [&](const VARIANT& nameOrNumber) { return ColumnAt(nameOrNumber); });
  }
  return columns;
}

HRESULT RecordsetObject::GetRows(LONG rows, VARIANT start, VARIANT fields, VARIANT* table) {
  if (!IsMissing(start)) {
    return NotSupported();
  }
  return Call([&] {
    VARIANT& result = Out(table);
    if (rows < kRestOfRows) {
      throw odbc::MakeError(odbc::AdoError::WrongArguments, odbc::kRecordsetSource);
    }
    const auto columns = ColumnsAt(fields);
    const auto taken =
        ado_.TakeRows(rows == kRestOfRows ? ado_.RowCount() : static_cast<std::size_t>(rows));
    std::array bounds{SAFEARRAYBOUND{.cElements = static_cast<ULONG>(columns.size()), .lLbound = 0},
                      SAFEARRAYBOUND{.cElements = static_cast<ULONG>(taken.size()), .lLbound = 0}};
    com::Variant array = com::NewArray(bounds);
    {
      const com::Elements elements(array.get());
      VARIANT* element = elements.begin();
      for (const odbc::Row& row : taken) {
        for (const std::size_t column : columns) {
          *element++ = com::Variant(row[column]).Detach();
        }
      }
    }
    result = array.Detach();
  });
}

HRESULT RecordsetObject::get_RecordCount(ADO_LONGPTR* count) {
  return Call([&] {
    // A forward-only cursor does not know its number of rows; ADO then returns -1.
    const auto rows = static_cast<ADO_LONGPTR>(ado_.RowCount());
    Out(count) = ado_.CursorType() == odbc::CursorType::ForwardOnly ? -1 : rows;
  });
}

HRESULT RecordsetObject::get_State(LONG* state) {
  return Call([&] { Out(state) = ado_.IsOpen() ? adStateOpen : adStateClosed; });
}

HRESULT RecordsetObject::get_EditMode(EditModeEnum* mode) {
  return Call([&] { Out(mode) = ado_.EditInProgress() ? adEditInProgress : adEditNone; });
}

HRESULT RecordsetObject::get_Source(VARIANT* source) {
  return Call([&] { Store(source, source_); });
}

HRESULT RecordsetObject::put_Source(BSTR source) {
  return Call([&] {
    RequireClosed();
    source_ = com::TextOf(source);
  });
}

HRESULT RecordsetObject::MoveNext() {
  return Call([&] { ado_.MoveNext(); });
}

HRESULT RecordsetObject::MovePrevious() {
  return Call([&] { ado_.MovePrevious(); });
}

HRESULT RecordsetObject::MoveFirst() {
  return Call([&] { ado_.MoveFirst(); });
}

HRESULT RecordsetObject::MoveLast() {
  return Call([&] { ado_.MoveLast(); });
}

HRESULT RecordsetObject::Open(VARIANT source, VARIANT activeConnection, CursorTypeEnum cursorType,
                              LockTypeEnum lockType, LONG options) {
  return Call([&] {
    RequireNoOptions(options, odbc::kRecordsetSource);
    RequireClosed();
    if (!IsMissing(source)) {
      source_ = automation::ToText(com::ToValue(source), automation::Regional());
    }
    if (!IsMissing(activeConnection)) {
      UseConnection(activeConnection);
    }
    if (!connection_) {
      throw odbc::MakeError(odbc::AdoError::InvalidConnection, odbc::kRecordsetSource);
    }
    connection_->Provide([&](odbc::AdoConnection& ado) {
      ado_.Open(
          source_, ado,
          cursorType == adOpenUnspecified ? cursorType_ : static_cast<odbc::CursorType>(cursorType),
          lockType == adLockUnspecified ? lockType_ : static_cast<odbc::LockType>(lockType));
    });
  });
}

HRESULT RecordsetObject::Close() {
  return Call([&] { ado_.Close(); });
}

HRESULT RecordsetObject::Update(VARIANT fields, VARIANT values) {
  if (!IsMissing(fields) || !IsMissing(values)) {
    return NotSupported();
  }
  return Call([&] { ado_.Update(); });
}

HRESULT RecordsetObject::CancelUpdate() {
  return Call([&] { ado_.CancelUpdate(); });
}

HRESULT RecordsetObject::Clone(LockTypeEnum lockType, _Recordset** clone) {
  return Call([&] {
    Out(clone) = com::MakeObject<RecordsetObject>(ado_.Clone(static_cast<odbc::LockType>(lockType)),
                                                  connection_, source_)
                     .Detach();
  });
}

}  // namespace ado_dll
