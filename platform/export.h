// The export and import of symbols of shared libraries. Each platform library defines its own macro from these two.
#pragma once

#if defined(_WIN32)
#define PLATFORM_EXPORT __declspec(dllexport)
#define PLATFORM_IMPORT __declspec(dllimport)
#else
#define PLATFORM_EXPORT __attribute__((visibility("default")))
#define PLATFORM_IMPORT __attribute__((visibility("default")))
#endif

#if defined(QEHOST_BUILD)
#define QEHOST_API PLATFORM_EXPORT
#else
#define QEHOST_API PLATFORM_IMPORT
#endif

#if defined(ZSR_BUILD)
#define ZSR_API PLATFORM_EXPORT
#else
#define ZSR_API PLATFORM_IMPORT
#endif

#if defined(FQCORE_BUILD)
#define FQCORE_API PLATFORM_EXPORT
#else
#define FQCORE_API PLATFORM_IMPORT
#endif

#if defined(_WIN32)
#define WIN32_STANDIN_API // nothing stands in for the system there
#elif defined(WIN32_STANDIN_BUILD)
#define WIN32_STANDIN_API PLATFORM_EXPORT
#else
#define WIN32_STANDIN_API PLATFORM_IMPORT
#endif
