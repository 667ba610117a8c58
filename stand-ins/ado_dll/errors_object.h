// ADO's Errors collection: the driver's error from the connection's last operation.
#pragma once

#include <optional>
#include <vector>

#include "ado_dll/interfaces.h"
#include "odbc/driver_error.h"

namespace ado_dll {

class ErrorObject : public com::DualObject<Error> {
 public:
  explicit ErrorObject(odbc::DriverError error);

  HRESULT STDMETHODCALLTYPE get_Number(LONG* number) override;
  HRESULT STDMETHODCALLTYPE get_Source(BSTR* source) override;
  HRESULT STDMETHODCALLTYPE get_Description(BSTR* description) override;
  HRESULT STDMETHODCALLTYPE get_HelpFile(BSTR* file) override;
  HRESULT STDMETHODCALLTYPE get_HelpContext(LONG* context) override;
  HRESULT STDMETHODCALLTYPE get_SQLState(BSTR* state) override;
  HRESULT STDMETHODCALLTYPE get_NativeError(LONG* native) override;

 private:
  odbc::DriverError error_;
};

// Holds at most one error.
class ErrorsObject : public com::DualObject<Errors> {
 public:
  void Remember(const odbc::DriverError& error) { error_ = error; }
  void Forget() { error_.reset(); }

  HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override;
  HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** object) override;
  // Error 3265 for an index without an error.
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, Error** object) override;
  HRESULT STDMETHODCALLTYPE Refresh() override;
  HRESULT STDMETHODCALLTYPE Clear() override;

 private:
  std::optional<odbc::DriverError> error_;
};

}  // namespace ado_dll
