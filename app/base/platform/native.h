#pragma once

// The system's own header where there is one, without its macros min and max. ODBC's headers want it before
// them.
#if __has_include(<windows.h>)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif
