// Runs an operation once for each platform call that it makes, with that call failing.
#pragma once

#include <atlexcept.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/testing.h"
#include "support/triple.h"

// What came of a run. What the caller owns by it is released with the object, after the script.
struct Outcome {
    bool failed;
    std::shared_ptr<void> held = nullptr;
};

struct Swept {
    using Act = std::function<Outcome(Triple&)>;

    const char* name;
    std::function<Act()> arrange;  // makes a fresh arrangement, and gives the operation on it
    // Calls whose failure the operation passes over: "FindClose", or "FindClose#2" for the second.
    std::vector<std::string> passedOver = {};
    // Calls whose failure the operation tells by another code than theirs; 0: with a clear triple.
    std::vector<std::pair<std::string, DWORD>> toldAs = {};
};

// An operation that opens a fresh object: `open(object, triple)` gives null on failure.
template <class Object, class Open>
Swept openingOf(const char* name, Open open, std::vector<std::string> passedOver = {}) {
    const auto act = [open](Triple& triple) {
        const auto object = std::make_shared<Object>();
        const bool failed = open(*object, triple) == nullptr;
        return Outcome{failed, object};
    };
    return {name, [act] { return act; }, std::move(passedOver)};
}

namespace sweeping {

inline constexpr DWORD code = ERROR_GEN_FAILURE;

inline bool isOneOf(const std::string& name, const std::vector<std::string>& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The calls that can fail, in order, each as "Name#k" for its k-th time.
inline std::vector<std::string> callsOf(const Swept& swept) {
    const auto act = swept.arrange();
    const auto before = machine::inUse();
    Triple triple;
    std::vector<std::string> result;
    {
        machine::Script script;
        const Outcome outcome = act(triple);
        EXPECT_EQ(Report(outcome.failed, triple), Report(false)) << "without a failing call";
        std::map<std::string, int> times;
        for (const auto& call : script.calls()) {
            const auto made = call.name + "#" + std::to_string(++times[call.name]);
            if (call.canFail()) result.push_back(made);
        }
    }
    EXPECT_EQ(machine::inUse(), before) << "leaks";
    return result;
}

// The code by which the operation tells that the call failed; 0: by none.
inline DWORD toldCode(const Swept& swept, const std::string& name) {
    for (const auto& [call, told] : swept.toldAs) {
        if (call == name) return told;
    }
    // The runtime's heap tells no code of its own.
    return name == "_strdup" ? DWORD{ERROR_NOT_ENOUGH_MEMORY} : code;
}

// The operation's outcome with its n-th call failing; an exception of a conversion is none.
inline std::optional<Outcome> outcomeOf(const Swept::Act& act, unsigned n, Triple& triple) try {
    machine::Script script;
    script.failNth(n, code);
    return act(triple);
} catch (const CAtlException& exception) {
    EXPECT_EQ(exception.m_hr, HRESULT_FROM_WIN32(code));
    return std::nullopt;
}

inline void runFailing(const Swept& swept, unsigned n, const std::string& call) {
    const auto name = call.substr(0, call.find('#'));
    const bool passedOver = isOneOf(call, swept.passedOver) || isOneOf(name, swept.passedOver);
    const bool converts = isOneOf(name, {"MultiByteToWideChar", "WideCharToMultiByte"});
    const auto act = swept.arrange();
    const auto before = machine::inUse();
    Triple triple;
    if (auto outcome = outcomeOf(act, n, triple)) {
        EXPECT_FALSE(converts) << "did not throw";
        const DWORD told = passedOver ? 0 : toldCode(swept, name);
        EXPECT_EQ(Report(outcome->failed, triple), Report(!passedOver, told));
    } else {
        EXPECT_TRUE(converts) << "threw";
    }
    // What the platform refuses to take back stays in use.
    const bool releases =
        isOneOf(name, {"CloseHandle", "FindClose", "FreeLibrary", "UnmapViewOfFile"});
    EXPECT_TRUE(releases || machine::inUse() == before) << "leaks";
    if (releases) machine::reclaimAll();
}

}  // namespace sweeping

inline void sweepFailures(const Swept& swept) {
    SCOPED_TRACE(swept.name);
    const auto calls = sweeping::callsOf(swept);
    EXPECT_FALSE(calls.empty()) << "makes no call that can fail";
    for (unsigned n = 1; n <= calls.size(); ++n) {
        SCOPED_TRACE("with failing " + calls[n - 1]);
        sweeping::runFailing(swept, n, calls[n - 1]);
    }
}
