// What a program's file says of itself.
#pragma once

#include <string>

#include "diagnosis/core/computer.h"

namespace diagnosis {

// Reads the file only; asks no server about its certificate.
ProgramFile ExamineProgramFile(const std::wstring& path);

}  // namespace diagnosis
