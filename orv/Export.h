#pragma once

/// Marks what the library exports. Everything else stays hidden inside it.
#if defined(_WIN32)
#if defined(ORV_BUILDING_LIBRARY)
#define ORV_API __declspec(dllexport)
#else
#define ORV_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define ORV_API __attribute__((visibility("default")))
#else
#define ORV_API
#endif

/// Lets the compiler check a printf format against its arguments. Both numbers are 1-based positions.
#if defined(__GNUC__) && !defined(_WIN32)
#define ORV_PRINTF_FORMAT(formatAt, firstAt) __attribute__((format(printf, formatAt, firstAt)))
#else
#define ORV_PRINTF_FORMAT(formatAt, firstAt)
#endif
