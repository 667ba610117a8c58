#include "windows/ansi_text.h"

#include "com/wide_text.h"
#include "com/win32.h"

namespace windows {

std::string Ansi(std::u16string_view text) {
  const std::wstring wide = com::Wide(text);
  const int wideLength = static_cast<int>(wide.size());
  const int length =
      WideCharToMultiByte(CP_ACP, 0, wide.data(), wideLength, nullptr, 0, nullptr, nullptr);
  std::string ansi(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), wideLength, ansi.data(), length, nullptr, nullptr);
  return ansi;
}

std::u16string FromAnsi(std::string_view text) {
  const int ansiLength = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), ansiLength, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), ansiLength, wide.data(), length);
  return com::FromWide(wide);
}

}  // namespace windows
