#pragma once

// The one way this program includes the system's header: without the macros that clash
// with the names of a camera and of the standard library.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef UNICODE
#define UNICODE
#define _UNICODE
#endif

#include <windows.h>

#undef near
#undef far
#undef small
#undef ERROR
