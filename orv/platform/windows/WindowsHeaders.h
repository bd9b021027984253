#pragma once

// The only door to the Windows API: lean, and without the macros that break the standard library.

#if !defined(WIN32_LEAN_AND_MEAN)
#define WIN32_LEAN_AND_MEAN
#endif
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#if !defined(_WIN32_WINNT) || _WIN32_WINNT < 0x0602
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0602 // Windows 8: the limits of a thread's stack
#endif

#include <windows.h>
