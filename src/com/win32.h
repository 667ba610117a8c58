// <windows.h> and COM's headers, without the macros that would rename methods of the ports
// (RegisterClass would become RegisterClassW) and of IProvideClassInfo. The only place that
// includes them.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#undef CreateWindow
#undef DeleteFile
#undef GetClassInfo
#undef MessageBox
#undef RegisterClass
#undef UnregisterClass

#include <oleauto.h>
#include <olectl.h>
