// ADO's Connection.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "ado_dll/errors_object.h"
#include "ado_dll/unsupported_connection.h"
#include "odbc/ado_connection.h"

namespace ado_dll {

class ConnectionObject : public UnsupportedConnection {
 public:
  // The object behind a Connection that a caller passed. Error 3709 for Nothing, error 3001 for an
  // object that is not a Connection of this ADO.
  static com::ComPtr<ConnectionObject> From(IUnknown* object);

  // Runs `body` and adds any driver error that it raises to the Errors collection.
  template <class Body>
  auto Provide(Body&& body) {
    errors_->Forget();
    try {
      return std::forward<Body>(body)(ado_);
    } catch (const odbc::DriverError& error) {
      errors_->Remember(error);
      throw;
    }
  }

  // Like Open below, but takes C++ strings.
  void OpenOn(std::u16string_view connectionString, std::u16string_view user,
              std::u16string_view password);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  HRESULT STDMETHODCALLTYPE get_ConnectionString(BSTR* text) override;
  HRESULT STDMETHODCALLTYPE put_ConnectionString(BSTR text) override;
  HRESULT STDMETHODCALLTYPE get_CommandTimeout(LONG* seconds) override;
  HRESULT STDMETHODCALLTYPE get_ConnectionTimeout(LONG* seconds) override;
  HRESULT STDMETHODCALLTYPE get_Version(BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_Provider(BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_State(LONG* state) override;
  HRESULT STDMETHODCALLTYPE get_Errors(Errors** object) override;
  HRESULT STDMETHODCALLTYPE get_CursorLocation(CursorLocationEnum* location) override;
  HRESULT STDMETHODCALLTYPE put_CursorLocation(CursorLocationEnum location) override;
  HRESULT STDMETHODCALLTYPE Open(BSTR connectionString, BSTR user, BSTR password,
                                 LONG options) override;
  HRESULT STDMETHODCALLTYPE Close() override;
  HRESULT STDMETHODCALLTYPE Execute(BSTR statement, VARIANT* recordsAffected, LONG options,
                                    _Recordset** recordset) override;
  HRESULT STDMETHODCALLTYPE BeginTrans(LONG* level) override;
  HRESULT STDMETHODCALLTYPE CommitTrans() override;
  HRESULT STDMETHODCALLTYPE RollbackTrans() override;

 private:
  odbc::AdoConnection ado_;
  // As the caller gave it, with Windows paths.
  std::u16string connectionString_;
  odbc::CursorLocation cursorLocation_ = odbc::CursorLocation::Server;
  com::ComPtr<ErrorsObject> errors_ = com::MakeObject<ErrorsObject>();
};

}  // namespace ado_dll
