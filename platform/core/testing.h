// What tests say to the machine: scripts for its entry points, and what is still in use.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/in_use.h"
#include "platform_export.h"

namespace machine {

// One call as it was made. Wide strings stand in UTF-8, others as they are, all in quotes; numbers
// in decimal; blocks of bytes in hexadecimal; a null pointer as "null" and any other as "pointer".
struct CallRecord {
    std::string name;
    std::vector<std::string> arguments;
    bool fallible;  // whether the operation can be made to fail

    std::string text() const {  // as in: DeleteFileW("C:\a.txt")
        std::string result = name + "(";
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            result += (i == 0 ? "" : ", ") + arguments[i];
        }
        return result + ")";
    }
};

// While it lives, the calls of all threads are recorded, and the rules given to it decide them.
// A rule counts calls from when it is given, beginning with 1. One script at a time.
class PLATFORM_API Script {
  public:
    Script();
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // The n-th call of the operation fails with the last error `code`; n = 0: every call.
    void fail(std::string_view name, std::uint32_t code, unsigned n = 1);
    // The n-th call that can fail, of whatever operation, fails with `code`.
    void failNth(unsigned n, std::uint32_t code);
    // The n-th call of the operation gives `value` and does nothing else; n = 0: every call.
    void answer(std::string_view name, std::uintptr_t value, unsigned n = 0);
    // The entry point is missing in the module: GetProcAddress gives null for it.
    void missing(std::string_view module, std::string_view entryPoint);

    std::vector<CallRecord> calls() const;
    // The same as text: name and arguments of each.
    std::vector<std::string> texts() const;
    unsigned count(std::string_view name) const;

  private:
    struct State;
    std::unique_ptr<State> state_;
    friend struct ScriptAccess;
};

// Takes back all that is in use: what a script made fail to be released.
PLATFORM_API void reclaimAll();

}  // namespace machine
