/// @file
/// Marks what the library exports.
#pragma once

#if defined(_WIN32)
#if defined(JW32_BUILDING)
#define JW32_API __declspec(dllexport)
#else
#define JW32_API __declspec(dllimport)
#endif
#else
/// In front of every exported function and class.
#define JW32_API __attribute__((visibility("default")))
#endif
