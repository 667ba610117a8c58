#include "windows/document_source.h"

#include <cstdint>

#include "com/com_ptr.h"
#include "com/wide_text.h"
#include "parser_limits/parser_limits.h"

namespace windows {
namespace {

using platform::Reason;

// In bytes. Wine's MSXML copies a stream again for each chunk: 4 MB take 0.3 s, 64 MB more than a
// minute. A byte array takes no longer than parsing, but newer versions of Wine's MSXML reject one
// with ISO-8859-1 letters.
constexpr DWORD kLongestStream = DWORD{4} << 20;

bool ReadFit(HANDLE file, void* target, DWORD length, DocumentSource& source) {
  DWORD read = 0;
  if (target == nullptr || ReadFile(file, target, length, &read, nullptr) == FALSE ||
      read != length) {
    source.refusal = Reason::Unreadable;
    return false;
  }
  source.isFitToParse = parser_limits::IsFitToParse({static_cast<const char*>(target), length});
  if (!source.isFitToParse) {
    source.refusal = Reason::NotFit;
  }
  return source.isFitToParse;
}

DocumentSource ReadStream(HANDLE file, DWORD length) {
  DocumentSource source;
  com::ComPtr<IStream> stream;
  HGLOBAL memory = nullptr;
  // The memory may be larger than the data, so the stream's size is set.
  if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive())) ||
      FAILED(stream->SetSize({.QuadPart = length})) ||
      FAILED(GetHGlobalFromStream(stream.get(), &memory))) {
    return source;
  }
  const bool complete = ReadFit(file, GlobalLock(memory), length, source);
  GlobalUnlock(memory);
  if (complete) {
    VARIANT& holder = *source.bytes.Receive();
    V_UNKNOWN(&holder) = stream.Detach();
    V_VT(&holder) = VT_UNKNOWN;
  }
  return source;
}

DocumentSource ReadArray(HANDLE file, DWORD length) {
  DocumentSource source;
  SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, length);
  if (array == nullptr) {
    return source;
  }
  VARIANT& holder = *source.bytes.Receive();
  V_ARRAY(&holder) = array;
  V_VT(&holder) = VT_ARRAY | VT_UI1;
  if (!ReadFit(file, array->pvData, length, source)) {
    source.bytes.Receive();
  }
  return source;
}

Reason ReasonOf(DWORD failure) {
  return failure == ERROR_FILE_NOT_FOUND || failure == ERROR_PATH_NOT_FOUND ? Reason::NotFound
                                                                            : Reason::Unreadable;
}

}  // namespace

DocumentSource ReadDocument(FileCalls& calls, const std::u16string& path) {
  const FileHandle file(OpenPatiently(calls, com::Wide(path), GENERIC_READ, FILE_SHARE_READ,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL));
  const DWORD failure = file.get() == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
  LARGE_INTEGER size{};
  if (GetFileSizeEx(file.get(), &size) == FALSE) {
    return {.bytes = {}, .isFitToParse = true, .refusal = ReasonOf(failure)};
  }
  if (size.QuadPart == 0) {
    return {.bytes = {}, .isFitToParse = true, .refusal = Reason::EmptyFile};
  }
  if (static_cast<std::uint64_t>(size.QuadPart) > parser_limits::kLargestDocument) {
    return {.bytes = {}, .isFitToParse = false, .refusal = Reason::TooLarge};
  }
  return size.LowPart <= kLongestStream ? ReadStream(file.get(), size.LowPart)
                                        : ReadArray(file.get(), size.LowPart);
}

}  // namespace windows
