#include "ado_dll/unix_path.h"

#include <memory>
#include <optional>

#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "odbc/connection_text.h"

namespace ado_dll {
namespace {

constexpr std::u16string_view kDatabase = u"Database";

struct HeapText {
  void operator()(char* text) const { HeapFree(GetProcessHeap(), 0, text); }
};

bool IsDrivePath(std::u16string_view path) {
  const auto isLetter = [](char16_t unit) {
    return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
  };
  return path.size() > 2 && isLetter(path[0]) && path[1] == u':' &&
         (path[2] == u'\\' || path[2] == u'/');
}

// Nothing outside Wine, or if Wine knows no such folder.
std::optional<std::u16string> UnixPath(std::u16string_view path) {
  using Translator = char*(CDECL*)(const wchar_t*);
  const auto translate = reinterpret_cast<Translator>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  if (translate == nullptr) {
    return std::nullopt;
  }
  const std::unique_ptr<char, HeapText> unixPath(translate(com::Wide(path).c_str()));
  return unixPath ? std::optional(automation::FromUtf8(unixPath.get())) : std::nullopt;
}

}  // namespace

std::u16string WithUnixPath(std::u16string_view connectionString) {
  odbc::ConnectionText text(connectionString);
  const auto database = text.Find(kDatabase);
  const auto unixPath = database && IsDrivePath(*database) ? UnixPath(*database) : std::nullopt;
  if (!unixPath) {
    return std::u16string(connectionString);
  }
  text.Set(kDatabase, *unixPath);
  return text.Text();
}

}  // namespace ado_dll
