#include "windows/message_boxes.h"

#include "windows/wide_text.h"
#include "windows/win32.h"

namespace windows {
namespace {

constexpr std::u16string_view kDefaultTitle = u"Vilnor";

UINT IconStyle(platform::Icon icon) {
  switch (icon) {
    case platform::Icon::Critical:
      return MB_ICONERROR;
    case platform::Icon::Question:
      return MB_ICONQUESTION;
    case platform::Icon::Exclamation:
      return MB_ICONWARNING;
    default:
      return 0;
  }
}

}  // namespace

platform::Answer MessageBoxes::Show(const platform::MessageBox& box) {
  const bool asks = box.buttons == platform::Buttons::YesNo;
  const UINT style =
      IconStyle(box.icon) | (asks ? MB_YESNO : MB_OK) | MB_TASKMODAL | MB_SETFOREGROUND;
  const std::wstring title = Wide(box.title.empty() ? kDefaultTitle : box.title);
  const int answer = MessageBoxW(nullptr, Wide(box.text).c_str(), title.c_str(), style);
  if (!asks) {
    return platform::Answer::Ok;
  }
  return answer == IDYES ? platform::Answer::Yes : platform::Answer::No;
}

}  // namespace windows
