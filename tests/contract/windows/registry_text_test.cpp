// Registry texts written by other programs, which the component's own calls cannot produce.
#include <string>

#include "com/wide_text.h"
#include "com/win32.h"
#include "contract/registry_fixture.h"

namespace contract {
namespace {

class RegistryText : public RegistryContract {
 protected:
  // Writes these bytes as a text value and gives the value that is read back.
  std::u16string ReadFrom(const std::string& bytes) {
    const auto key = Opened(path);
    const LSTATUS status = RegSetValueExA(reinterpret_cast<HKEY>(key.key()), "Path", 0, REG_SZ,
                                          reinterpret_cast<const BYTE*>(bytes.data()),
                                          static_cast<DWORD>(bytes.size()));
    EXPECT_EQ(status, ERROR_SUCCESS);
    Api::Limits limits;
    EXPECT_EQ(Registry().QueryLimits(key.key(), limits), Api::kSuccess);
    Api::ValueEntry entry;
    EXPECT_EQ(Registry().EnumValue(key.key(), 0, limits, entry), Api::kSuccess);
    EXPECT_EQ(entry.name, u"Path");
    EXPECT_EQ(entry.type, Api::kTypeText);
    return entry.text;
  }
};

TEST_F(RegistryText, UnterminatedRegistryTextEndsWithItsData) {
  EXPECT_EQ(ReadFrom("C:\\Link"), u"C:\\Link");
  EXPECT_EQ(ReadFrom(std::string("C:\\Link\0", 8)), u"C:\\Link");
  EXPECT_EQ(Loaded(path).GetValue(u"Path"), u"C:\\Link");
}

TEST_F(RegistryText, RegistryTextOfNoBytesIsEmpty) {
  EXPECT_EQ(ReadFrom(""), u"");
  EXPECT_EQ(Loaded(path).GetValue(u"Path"), u"");
}

}  // namespace
}  // namespace contract
