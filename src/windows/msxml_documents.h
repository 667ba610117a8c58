#pragma once

#include "com/com_ptr.h"
#include "platform/result_document.h"
#include "windows/file_calls.h"

namespace windows {

// XML documents through the system's MSXML.
class MsxmlDocuments : public platform::ResultDocuments {
 public:
  explicit MsxmlDocuments(FileCalls& calls = SystemFileCalls()) : calls_(calls) {}
  std::unique_ptr<platform::ResultDocument> New() override;

 private:
  FileCalls& calls_;
};

// MSXML's own document behind a document created here.
com::ComPtr<IDispatch> DispatchOf(platform::ResultDocument& document);

}  // namespace windows
