#pragma once

#include "platform/result_document.h"

namespace windows {

// XML documents by the system's MSXML.
class MsxmlDocuments : public platform::ResultDocuments {
 public:
  std::unique_ptr<platform::ResultDocument> New() override;
};

}  // namespace windows
