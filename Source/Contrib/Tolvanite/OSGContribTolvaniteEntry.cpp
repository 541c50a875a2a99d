// The entry of the module on Windows. The library keeps nothing per thread that the loader would
// have to make or end: threads that come and go need not call it.

#ifdef _WIN32

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
    if(reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}

#endif
