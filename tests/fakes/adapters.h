// This build's adapters for what the tests do not fake: files and the result parser.
#pragma once

#ifdef _WIN32
#include "windows/msxml_documents.h"
#include "windows/win32_files.h"
#else
#include "native/local_files.h"
#include "native/xml_documents.h"
#endif

namespace fakes {

#ifdef _WIN32
using RealFiles = windows::Win32Files;
using RealDocuments = windows::MsxmlDocuments;
#else
using RealFiles = native::LocalFiles;
using RealDocuments = native::XmlDocuments;
#endif

}  // namespace fakes
