#include "ado_dll/field_object.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ado_dll/arguments.h"
#include "com/variant.h"

namespace ado_dll {
namespace {

struct KindType {
  odbc::ColumnKind kind;
  DataTypeEnum type;
};

constexpr std::array kKindTypes = {
    KindType{odbc::ColumnKind::Boolean, adBoolean},
    KindType{odbc::ColumnKind::Int16, adSmallInt},
    KindType{odbc::ColumnKind::Int32, adInteger},
    KindType{odbc::ColumnKind::BigInt, adBigInt},
    KindType{odbc::ColumnKind::Single, adSingle},
    KindType{odbc::ColumnKind::Double, adDouble},
    KindType{odbc::ColumnKind::Decimal, adNumeric},
    KindType{odbc::ColumnKind::Currency, adCurrency},
    KindType{odbc::ColumnKind::Date, adDBTimeStamp},
    KindType{odbc::ColumnKind::Time, adDBTime},
    KindType{odbc::ColumnKind::Text, adVarWChar},
    KindType{odbc::ColumnKind::Binary, adVarWChar},
};

}  // namespace

FieldObject::FieldObject(com::ComPtr<RecordsetObject> recordset, std::size_t index)
    : recordset_(std::move(recordset)),
      index_(index),
      column_(recordset_->Ado().Columns()[index]) {}

HRESULT FieldObject::get_Name(BSTR* name) {
  return Call([&] { Out(name) = NewText(column_.name); });
}

HRESULT FieldObject::get_Type(DataTypeEnum* type) {
  return Call([&] {
    const auto* const found =
        std::find_if(kKindTypes.begin(), kKindTypes.end(),
                     [&](const auto& entry) { return entry.kind == column_.kind; });
    Out(type) = found->type;
  });
}

HRESULT FieldObject::get_DefinedSize(ADO_LONGPTR* size) {
  return Call([&] { Out(size) = static_cast<ADO_LONGPTR>(column_.size); });
}

HRESULT FieldObject::get_Precision(unsigned char* precision) {
  return Call([&] {
    constexpr std::size_t kMost = 255;
    Out(precision) = static_cast<unsigned char>(std::min(column_.size, kMost));
  });
}

HRESULT FieldObject::get_NumericScale(unsigned char* scale) {
  return Call([&] { Out(scale) = static_cast<unsigned char>(column_.scale); });
}

HRESULT FieldObject::get_Value(VARIANT* value) {
  return Call([&] { Store(value, recordset_->Ado().Field(index_)); });
}

HRESULT FieldObject::put_Value(VARIANT value) {
  return Call([&] { recordset_->Ado().SetField(index_, com::ToValue(value)); });
}

}  // namespace ado_dll
