#include "contract/adapters.h"

#include "automation/text.h"
#include "portable/local_files.h"
#include "portable/odbc_database.h"
#include "portable/xml_documents.h"

namespace contract {

std::unique_ptr<platform::Database> NewDatabase() {
  return std::make_unique<portable::OdbcDatabase>();
}

std::unique_ptr<platform::Files> NewFiles() {
  return std::make_unique<portable::LocalFiles>();
}

std::unique_ptr<platform::ResultDocuments> NewResultDocuments() {
  return std::make_unique<portable::XmlDocuments>();
}

std::u16string PathText(const std::string& nativePath) {
  return automation::FromUtf8(nativePath);
}

}  // namespace contract
