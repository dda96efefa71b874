// What tests say to the machine: scripts for its entry points.
#pragma once

#include <any>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/call_record.h"
#include "core/in_use.h"
#include "core/script.h"
#include "core/signature.h"
#include "platform_export.h"

namespace machine {

// Which calls of an operation a rule decides. They count from when the rule is given, beginning
// with 1. A number stands for that one call.
class Calls {
  public:
    constexpr Calls(unsigned n) : first_(n), last_(n) {}
    static constexpr Calls from(unsigned n) {
        Calls calls(n);
        calls.last_ = std::numeric_limits<unsigned>::max();
        return calls;
    }
    constexpr bool contain(unsigned n) const { return n >= first_ && n <= last_; }
    std::string text() const {
        return "call " + std::to_string(first_) + (last_ > first_ ? " and those after it" : "");
    }

  private:
    unsigned first_, last_;
};
inline constexpr Calls everyCall = Calls::from(1);

// While it lives, the calls of all threads are recorded, and the rules given to it decide them: the
// first one that is about a call. A rule that has decided nothing at the end is reported to the
// listener of idle rules. One script at a time.
class PLATFORM_API Script {
  public:
    Script();
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // Calls of the operation fail in its own way (see script.h) with a system code. An operation
    // that returns an HRESULT can be given one.
    void fail(std::string_view name, std::uint32_t code, Calls which = 1);
    // The n-th call that can fail, of whatever operation, fails with the code.
    void failNth(unsigned n, std::uint32_t code);

    // Calls of the operation give the value and do nothing else.
    template <auto Function>
    void answer(std::type_identity_t<ResultOf<Function>> value, Calls which = everyCall) {
        addRule({std::string(nameOf<Function>), which, detail::answering(value)});
    }

    // Calls of the operation run the replacement, which has the operation's signature; for a method
    // without `this`. It may make calls itself, also of the same operation.
    template <auto Function>
    void instead(ReplacementOf<Function> replacement, Calls which = everyCall) {
        addRule({std::string(nameOf<Function>), which, detail::replacing(std::move(replacement))});
    }

    // The entry point is missing in the module: GetProcAddress gives null for it.
    void missing(std::string_view module, std::string_view entryPoint);

    std::vector<CallRecord> calls() const;
    // The same as text: name and arguments of each.
    std::vector<std::string> texts() const;
    unsigned count(std::string_view name) const;

  private:
    struct Rule {
        std::string name;  // empty: any operation that can fail
        Calls which;
        detail::Decision decision;
        unsigned seen = 0;
        bool hasFired = false;
    };
    struct MissingEntry {
        std::string module, entryPoint;
        bool hasFired = false;
    };

    void addRule(Rule rule);
    detail::Decision decide(const CallRecord& call);
    bool isMissing(std::string_view module, std::string_view entryPoint);
    std::vector<std::string> idleRules() const;
    friend detail::Decision detail::consult(CallRecord call);
    friend bool detail::isMissing(std::string_view module, std::string_view entryPoint);

    std::vector<Rule> rules_;
    std::vector<MissingEntry> missing_;
    std::vector<CallRecord> calls_;
};

// Hears of each rule that has decided nothing when its script ends.
using IdleRuleListener = void (*)(const std::string& rule);
PLATFORM_API void listenForIdleRules(IdleRuleListener listener);

}  // namespace machine
