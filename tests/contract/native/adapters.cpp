#include "contract/adapters.h"

#include <sys/fsuid.h>
#include <unistd.h>

#include "automation/text.h"
#include "native/local_files.h"
#include "native/odbc_database.h"
#include "native/xml_documents.h"

namespace contract {
namespace {

// A folder that cannot be written, with the thread as an ordinary user: root ignores permissions.
class ReadOnlyFolder {
 public:
  explicit ReadOnlyFolder(std::filesystem::path folder) : folder_(std::move(folder)) {
    permissions(folder_, kWriting, std::filesystem::perm_options::remove);
    setfsuid(kNobody);
  }
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;
  ~ReadOnlyFolder() {
    setfsuid(user_);
    permissions(folder_, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
  }

 private:
  static constexpr auto kWriting = std::filesystem::perms::owner_write |
                                   std::filesystem::perms::group_write |
                                   std::filesystem::perms::others_write;
  static constexpr uid_t kNobody = 65534;
  const uid_t user_ = geteuid();
  std::filesystem::path folder_;
};

}  // namespace

std::unique_ptr<platform::Database> NewDatabase() {
  return std::make_unique<native::OdbcDatabase>();
}

std::unique_ptr<platform::Files> NewFiles() {
  return std::make_unique<native::LocalFiles>();
}

std::unique_ptr<platform::ResultDocuments> NewResultDocuments() {
  return std::make_unique<native::XmlDocuments>();
}

std::shared_ptr<void> Held(const std::filesystem::path& file) {
  return std::make_shared<ReadOnlyFolder>(file.parent_path());
}

std::u16string PathText(const std::string& nativePath) {
  return automation::FromUtf8(nativePath);
}

}  // namespace contract
