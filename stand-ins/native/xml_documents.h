#pragma once

#include "platform/result_document.h"

namespace native {

// XML documents of the native build, through libxml2.
class XmlDocuments : public platform::ResultDocuments {
 public:
  std::unique_ptr<platform::ResultDocument> New() override;
};

}  // namespace native
