#include "ado_dll/connection_object.h"

#include <cstdint>

#include "ado_dll/arguments.h"
#include "ado_dll/recordset_object.h"
#include "ado_dll/unix_path.h"
#include "com/bstr.h"
#include "odbc/ado_error.h"
#include "odbc/statement.h"

namespace ado_dll {
namespace {

// Supported only by this ADO's connections.
constexpr IID kConnectionObject = {
    0x7e0f3c52, 0x4d0b, 0x4a57, {0x9d, 0x2e, 0x61, 0xb8, 0x0c, 0x5f, 0x2a, 0x94}};

// The transaction's nesting level: there is only one.
constexpr LONG kOutermost = 1;

}  // namespace

com::ComPtr<ConnectionObject> ConnectionObject::From(IUnknown* object) {
  if (object == nullptr) {
    throw odbc::MakeError(odbc::AdoError::InvalidConnection, odbc::kRecordsetSource);
  }
  com::ComPtr<ConnectionObject> connection;
  if (FAILED(object->QueryInterface(kConnectionObject, connection.ReceiveVoid()))) {
    throw odbc::MakeError(odbc::AdoError::WrongArguments, odbc::kRecordsetSource);
  }
  return connection;
}

HRESULT ConnectionObject::QueryInterface(REFIID id, void** object) {
  if (object != nullptr && id == kConnectionObject) {
    AddRef();
    *object = this;
    return S_OK;
  }
  return UnsupportedConnection::QueryInterface(id, object);
}

HRESULT ConnectionObject::get_ConnectionString(BSTR* text) {
  return Call([&] { Out(text) = NewText(connectionString_); });
}

HRESULT ConnectionObject::put_ConnectionString(BSTR text) {
  return Call([&] {
    ado_.SetConnectionString(com::TextOf(text));
    connectionString_ = ado_.ConnectionString();
  });
}

HRESULT ConnectionObject::get_CommandTimeout(LONG* seconds) {
  return Call([&] { Out(seconds) = LONG{odbc::kStatementTimeoutSeconds}; });
}

HRESULT ConnectionObject::get_ConnectionTimeout(LONG* seconds) {
  return Call([&] { Out(seconds) = LONG{odbc::kLoginTimeoutSeconds}; });
}

HRESULT ConnectionObject::get_Version(BSTR* text) {
  return Call([&] { Out(text) = NewText(u"2.8"); });
}

HRESULT ConnectionObject::get_Provider(BSTR* text) {
  return Call([&] { Out(text) = NewText(u"MSDASQL"); });
}

HRESULT ConnectionObject::get_State(LONG* state) {
  return Call([&] { Out(state) = ado_.IsOpen() ? adStateOpen : adStateClosed; });
}

HRESULT ConnectionObject::get_Errors(Errors** object) {
  return Call([&] { Out(object) = com::ComPtr<ErrorsObject>(errors_).Detach(); });
}

HRESULT ConnectionObject::get_CursorLocation(CursorLocationEnum* location) {
  return Call([&] { Out(location) = static_cast<CursorLocationEnum>(cursorLocation_); });
}

HRESULT ConnectionObject::put_CursorLocation(CursorLocationEnum location) {
  return Call([&] { cursorLocation_ = static_cast<odbc::CursorLocation>(location); });
}

void ConnectionObject::OpenOn(std::u16string_view connectionString, std::u16string_view user,
                              std::u16string_view password) {
  if (!connectionString.empty() && !ado_.IsOpen()) {
    connectionString_ = connectionString;
  }
  Provide(
      [&](odbc::AdoConnection& ado) { ado.Open(WithUnixPath(connectionString_), user, password); });
}

HRESULT ConnectionObject::Open(BSTR connectionString, BSTR user, BSTR password, LONG options) {
  return Call([&] {
    RequireNoOptions(options, odbc::kConnectionSource);
    OpenOn(com::TextOf(connectionString), com::TextOf(user), com::TextOf(password));
  });
}

HRESULT ConnectionObject::Close() {
  return Call([&] { ado_.Close(); });
}

HRESULT ConnectionObject::Execute(BSTR statement, VARIANT* recordsAffected, LONG options,
                                  _Recordset** recordset) {
  return Call([&] {
    Out(recordset) = nullptr;
    RequireNoOptions(options, odbc::kConnectionSource);
    std::int64_t affectedRows = 0;
    const auto text = com::TextOf(statement);
    auto rows = Provide([&](odbc::AdoConnection& ado) {
      return ado.Execute(text, cursorLocation_, &affectedRows);
    });
    if (recordsAffected != nullptr) {
      Store(recordsAffected, static_cast<std::int32_t>(affectedRows));
    }
    *recordset =
        com::MakeObject<RecordsetObject>(std::move(rows), com::ComPtr(this), text).Detach();
  });
}

HRESULT ConnectionObject::BeginTrans(LONG* level) {
  return Call([&] {
    Provide([](odbc::AdoConnection& ado) { ado.BeginTrans(); });
    if (level != nullptr) {
      *level = kOutermost;
    }
  });
}

HRESULT ConnectionObject::CommitTrans() {
  return Call([&] { Provide([](odbc::AdoConnection& ado) { ado.CommitTrans(); }); });
}

HRESULT ConnectionObject::RollbackTrans() {
  return Call([&] { Provide([](odbc::AdoConnection& ado) { ado.RollbackTrans(); }); });
}

}  // namespace ado_dll
