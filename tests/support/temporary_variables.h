// Keeps the environment variables of the temporary directory, and gives short ways to them.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <string>

class TemporaryVariables {
  public:
    TemporaryVariables() : tmp_(get("TMP")), temp_(get("TEMP")) {}
    ~TemporaryVariables() { set(tmp_, temp_); }
    TemporaryVariables(const TemporaryVariables&) = delete;
    TemporaryVariables& operator=(const TemporaryVariables&) = delete;

    // An empty text stands for a variable that is not set.
    static void set(const std::string& tmp, const std::string& temp) {
        _putenv(("TMP=" + tmp).c_str());
        _putenv(("TEMP=" + temp).c_str());
    }
    static std::string get(const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr ? value : "";
    }

  private:
    std::string tmp_, temp_;
};
