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

struct SweptOperation {
    using Act = std::function<Outcome(Triple&)>;

    const char* name;
    std::function<Act()> arrange;  // makes a fresh arrangement, and gives the operation on it
    // Calls whose failure the operation passes over: "FindClose", or "FindClose#2" for the second.
    std::vector<std::string> passedOver = {};
    // Calls whose failure the operation reports by another code than theirs; 0: by a clear triple.
    std::vector<std::pair<std::string, DWORD>> reportedAs = {};
};

// An operation that opens a fresh object: `open(object, triple)` gives null on failure.
template <class Object, class Open>
SweptOperation openingOf(const char* name, Open open, std::vector<std::string> passedOver = {}) {
    const auto act = [open](Triple& triple) {
        const auto object = std::make_shared<Object>();
        const bool failed = open(*object, triple) == nullptr;
        return Outcome{failed, object};
    };
    return {name, [act] { return act; }, std::move(passedOver)};
}

namespace sweeping {

inline constexpr DWORD code = ERROR_GEN_FAILURE;
inline constexpr DWORD formerError = ERROR_ALREADY_EXISTS;  // the last error before the operation

inline bool isOneOf(const std::string& name, const std::vector<std::string>& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The calls of the operation that can fail, in order, each with its number among those of its name.
struct FallibleCall {
    machine::CallRecord record;
    int number;
    std::string text() const { return record.name + "#" + std::to_string(number); }
};
inline std::vector<FallibleCall> callsOf(const SweptOperation& operation) {
    const auto act = operation.arrange();
    const auto before = machine::inUse();
    Triple triple;
    std::vector<FallibleCall> result;
    {
        machine::Script script;
        const Outcome outcome = act(triple);
        EXPECT_EQ(Report(outcome.failed, triple), Report(false)) << "without a failing call";
        std::map<std::string, int> times;
        for (const auto& call : script.calls()) {
            if (call.canFail()) result.push_back({call, ++times[call.name]});
        }
    }
    EXPECT_EQ(machine::inUse(), before) << "leaks";
    return result;
}

// The code by which the operation reports that the call failed; 0: by none.
inline DWORD reportedCode(const SweptOperation& operation, const machine::CallRecord& call) {
    for (const auto& [name, reported] : operation.reportedAs) {
        if (call.name == name) return reported;
    }
    using machine::CallKind;
    if (call.kind == CallKind::ReturnsHresult) return static_cast<DWORD>(HRESULT_FROM_WIN32(code));
    return call.kind == CallKind::SetsErrno ? DWORD{ERROR_NOT_ENOUGH_MEMORY} : code;
}

// The operation's outcome with its n-th call failing; an exception of a conversion is none.
inline std::optional<Outcome> outcomeOf(const SweptOperation::Act& act, unsigned n,
                                        Triple& triple) try {
    machine::Script script;
    script.failNth(n, code);
    SetLastError(formerError);
    return act(triple);
} catch (const CAtlException& exception) {
    EXPECT_EQ(exception.m_hr, HRESULT_FROM_WIN32(code));
    return std::nullopt;
}

inline void runFailing(const SweptOperation& operation, unsigned n, const FallibleCall& call) {
    const auto& name = call.record.name;
    const bool passedOver =
        isOneOf(call.text(), operation.passedOver) || isOneOf(name, operation.passedOver);
    const bool converts = isOneOf(name, {"MultiByteToWideChar", "WideCharToMultiByte"});
    const auto act = operation.arrange();
    const auto before = machine::inUse();
    Triple triple;
    if (auto outcome = outcomeOf(act, n, triple)) {
        EXPECT_FALSE(converts) << "did not throw";
        const DWORD reported = passedOver ? 0 : reportedCode(operation, call.record);
        EXPECT_EQ(Report(outcome->failed, triple), Report(!passedOver, reported));
    } else {
        EXPECT_TRUE(converts) << "threw";
    }
    EXPECT_EQ(machine::inUse(), before) << "leaks";
}

}  // namespace sweeping

inline void sweepFailures(const SweptOperation& operation) {
    SCOPED_TRACE(operation.name);
    const auto calls = sweeping::callsOf(operation);
    EXPECT_FALSE(calls.empty()) << "makes no call that can fail";
    for (unsigned n = 1; n <= calls.size(); ++n) {
        SCOPED_TRACE("with failing " + calls[n - 1].text());
        sweeping::runFailing(operation, n, calls[n - 1]);
    }
}
