#include "windows/ado_database.h"

#include <algorithm>
#include <iterator>

#include "automation/automation_error.h"
#include "com/bstr.h"
#include "com/com_error.h"
#include "com/variant.h"
#include "com/variant_array.h"
#include "com/win32.h"
// Must follow win32.h.
#include <adoint.h>

namespace windows {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

// The identifiers of ADO's classes and interfaces; every 32-bit ADO from 2.7 on supports them.
constexpr CLSID kConnectionClass = {
    0x00000514, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr CLSID kRecordsetClass = {
    0x00000535, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr IID kConnectionInterface = {
    0x00000550, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr IID kRecordsetInterface = {
    0x00000556, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};

template <class Interface>
com::ComPtr<Interface> Create(const CLSID& classId, const IID& interfaceId) {
  com::ComPtr<Interface> object;
  if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId,
                              object.ReceiveVoid()))) {
    throw AutomationError(RuntimeError::CannotCreateObject);
  }
  return object;
}

class AdoConnection : public platform::Connection {
 public:
  explicit AdoConnection(com::ComPtr<_ADOConnection> connection)
      : connection_(std::move(connection)) {}

  void SetConnectionString(const std::u16string& connectionString) override;
  void Open(const std::u16string& connectionString, const std::u16string& user,
            const std::u16string& password, std::int32_t options) override;
  std::unique_ptr<platform::Recordset> Execute(const std::u16string& statement,
                                               std::int32_t options) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

  IDispatch* dispatch() const { return connection_.get(); }

 private:
  com::ComPtr<_ADOConnection> connection_;
};

class AdoRecordset : public platform::Recordset {
 public:
  explicit AdoRecordset(com::ComPtr<_ADORecordset> recordset) : recordset_(std::move(recordset)) {}

  void SetCursorLocation(platform::CursorLocation location) override;
  void Open(const std::u16string& statement, platform::Connection& connection,
            platform::CursorType cursorType, platform::LockType lockType,
            std::int32_t options) override;
  bool Eof() override;
  void MoveNext() override;
  automation::Value Field(const std::u16string& name) override;
  automation::Value Field(std::int32_t index) override;
  std::vector<automation::Value> GetRows(std::span<const std::u16string_view> names) override;
  void SetField(const std::u16string& name, const automation::Value& value) override;
  std::unique_ptr<platform::Recordset> Clone(platform::LockType lockType) override;
  void Close() override;

  IDispatch* dispatch() const { return recordset_.get(); }

 private:
  automation::Value Collect(const com::Variant& nameOrIndex);

  com::ComPtr<_ADORecordset> recordset_;
};

void AdoConnection::SetConnectionString(const std::u16string& connectionString) {
  const com::Bstr text(connectionString);
  com::CheckCall([&] { return connection_->put_ConnectionString(text.get()); });
}

void AdoConnection::Open(const std::u16string& connectionString, const std::u16string& user,
                         const std::u16string& password, std::int32_t options) {
  const com::Bstr connectionText(connectionString);
  const com::Bstr userText(user);
  const com::Bstr passwordText(password);
  com::CheckCall([&] {
    return connection_->Open(connectionText.get(), userText.get(), passwordText.get(), options);
  });
}

std::unique_ptr<platform::Recordset> AdoConnection::Execute(const std::u16string& statement,
                                                            std::int32_t options) {
  const com::Bstr text(statement);
  com::Variant rowsAffected;
  com::ComPtr<_ADORecordset> rows;
  com::CheckCall([&] {
    return connection_->Execute(text.get(), rowsAffected.Receive(), options, rows.Receive());
  });
  return std::make_unique<AdoRecordset>(std::move(rows));
}

void AdoConnection::BeginTrans() {
  long level = 0;
  com::CheckCall([&] { return connection_->BeginTrans(&level); });
}

void AdoConnection::CommitTrans() {
  com::CheckCall([&] { return connection_->CommitTrans(); });
}

void AdoConnection::RollbackTrans() {
  com::CheckCall([&] { return connection_->RollbackTrans(); });
}

void AdoRecordset::SetCursorLocation(platform::CursorLocation location) {
  com::CheckCall(
      [&] { return recordset_->put_CursorLocation(static_cast<CursorLocationEnum>(location)); });
}

void AdoRecordset::Open(const std::u16string& statement, platform::Connection& connection,
                        platform::CursorType cursorType, platform::LockType lockType,
                        std::int32_t options) {
  const com::Variant source{automation::Value(statement)};
  // A program uses one kind of database, so the connection is ADO's too.
  const com::Variant activeConnection(static_cast<AdoConnection&>(connection).dispatch());
  com::CheckCall([&] {
    return recordset_->Open(source.get(), activeConnection.get(),
                            static_cast<CursorTypeEnum>(cursorType),
                            static_cast<LockTypeEnum>(lockType), options);
  });
}

bool AdoRecordset::Eof() {
  VARIANT_BOOL eof = VARIANT_FALSE;
  com::CheckCall([&] { return recordset_->get_EOF(&eof); });
  return eof != VARIANT_FALSE;
}

void AdoRecordset::MoveNext() {
  com::CheckCall([&] { return recordset_->MoveNext(); });
}

automation::Value AdoRecordset::Field(const std::u16string& name) {
  return Collect(com::Variant(com::Bstr(name)));
}

automation::Value AdoRecordset::Field(std::int32_t index) {
  return Collect(com::Variant(automation::Value(index)));
}

std::vector<automation::Value> AdoRecordset::GetRows(std::span<const std::u16string_view> names) {
  VARIANT currentRow{};
  V_VT(&currentRow) = VT_ERROR;
  V_ERROR(&currentRow) = DISP_E_PARAMNOTFOUND;
  const com::Variant fields = com::ArrayOf(names);
  com::Variant rows;
  com::CheckCall(
      [&] { return recordset_->GetRows(adGetRowsRest, currentRow, fields.get(), rows.Receive()); });
  // The first index is the field's.
  const com::Elements elements(rows.get());
  std::vector<automation::Value> values;
  values.reserve(elements.size());
  std::transform(elements.begin(), elements.end(), std::back_inserter(values), com::ToValue);
  return values;
}

void AdoRecordset::SetField(const std::u16string& name, const automation::Value& value) {
  const com::Variant index{com::Bstr(name)};
  const com::Variant content(value);
  com::CheckCall([&] { return recordset_->put_Collect(index.get(), content.get()); });
}

std::unique_ptr<platform::Recordset> AdoRecordset::Clone(platform::LockType lockType) {
  com::ComPtr<_ADORecordset> clone;
  com::CheckCall(
      [&] { return recordset_->Clone(static_cast<LockTypeEnum>(lockType), clone.Receive()); });
  return std::make_unique<AdoRecordset>(std::move(clone));
}

void AdoRecordset::Close() {
  com::CheckCall([&] { return recordset_->Close(); });
}

// Reads a field in one call. Fields, Item and Value would take three calls and create two more
// objects.
automation::Value AdoRecordset::Collect(const com::Variant& nameOrIndex) {
  com::Variant content;
  com::CheckCall([&] { return recordset_->get_Collect(nameOrIndex.get(), content.Receive()); });
  return com::ToValue(content.get());
}

}  // namespace

std::unique_ptr<platform::Connection> AdoDatabase::NewConnection() {
  return std::make_unique<AdoConnection>(
      Create<_ADOConnection>(kConnectionClass, kConnectionInterface));
}

std::unique_ptr<platform::Recordset> AdoDatabase::NewRecordset() {
  return std::make_unique<AdoRecordset>(
      Create<_ADORecordset>(kRecordsetClass, kRecordsetInterface));
}

com::ComPtr<IDispatch> DispatchOf(platform::Recordset& recordset) {
  return com::ComPtr<IDispatch>(static_cast<AdoRecordset&>(recordset).dispatch());
}

}  // namespace windows
