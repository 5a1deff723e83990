// The export macro of the module's symbols.
#pragma once

#if defined(_WIN32)
#if defined(ORVEL_COORDSYS_CORE_BUILD)
#define ORVEL_API __declspec(dllexport)
#else
#define ORVEL_API __declspec(dllimport)
#endif
#else
#define ORVEL_API __attribute__((visibility("default")))
#endif
