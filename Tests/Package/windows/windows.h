#pragma once

/// \file
/// What the module's entry needs of the system's header, for machines without a compiler for
/// Windows: enough to see that the entry compiles.

using BOOL = int;
using DWORD = unsigned long;
using LPVOID = void *;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__ *;
using HMODULE = HINSTANCE;

#define WINAPI
#define TRUE 1
#define DLL_PROCESS_ATTACH 1

extern "C" BOOL WINAPI DisableThreadLibraryCalls(HMODULE module);
