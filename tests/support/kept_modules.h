// Takes back the modules that the operations for free space keep for the life of the process.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

class KeepsModules : public testing::Test {
  protected:
    // One reference for the operations with a triple and one for those without.
    static void TearDownTestSuite() {
        for (int operation = 0; operation < 2; ++operation) {
            const HMODULE module = GetModuleHandleA("KERNEL32.DLL");
            if (module != nullptr) FreeLibrary(module);
        }
    }
};
