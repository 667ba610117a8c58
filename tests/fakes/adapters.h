// This build's adapters for what the tests do not double: files, and the parser of results.
#pragma once

#ifdef _WIN32
#include "windows/msxml_documents.h"
#include "windows/win32_files.h"
#else
#include "portable/local_files.h"
#include "portable/xml_documents.h"
#endif

namespace fakes {

#ifdef _WIN32
using RealFiles = windows::Win32Files;
using RealDocuments = windows::MsxmlDocuments;
#else
using RealFiles = portable::LocalFiles;
using RealDocuments = portable::XmlDocuments;
#endif

}  // namespace fakes
