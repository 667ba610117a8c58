#include "contract/adapters.h"

#include <objbase.h>

#include <algorithm>

#include "automation/text.h"
#include "com/win32.h"
#include "windows/ado_database.h"
#include "windows/msxml_documents.h"
#include "windows/win32_files.h"

namespace contract {
namespace {

// The tests' thread is an apartment like the host's.
class Apartment {
 public:
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { CoUninitialize(); }
};

void EnterApartment() {
  static const Apartment apartment;
}

}  // namespace

std::unique_ptr<platform::Database> NewDatabase() {
  EnterApartment();
  return std::make_unique<::windows::AdoDatabase>();
}

std::unique_ptr<platform::Files> NewFiles() {
  return std::make_unique<::windows::Win32Files>();
}

std::unique_ptr<platform::ResultDocuments> NewResultDocuments() {
  EnterApartment();
  return std::make_unique<::windows::MsxmlDocuments>();
}

std::shared_ptr<void> Held(const std::filesystem::path& file) {
  const HANDLE handle =
      CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  return handle == INVALID_HANDLE_VALUE ? nullptr : std::shared_ptr<void>(handle, CloseHandle);
}

std::u16string PathText(const std::string& nativePath) {
  std::u16string text = automation::FromUtf8(nativePath);
  std::replace(text.begin(), text.end(), u'/', u'\\');
  return text;
}

}  // namespace contract
