// Marks what the platform layer exports to the library, to applications and to tests.
#pragma once

#define PLATFORM_API __attribute__((visibility("default")))
#define WINBASEAPI extern "C" PLATFORM_API
#define WINAPI
#define CALLBACK
#define APIENTRY
