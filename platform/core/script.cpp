// The script in force, its rules, and the record of the calls made under it.
#include "core/script.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "core/testing.h"
#include "errhandlingapi.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace detail {
std::atomic<bool> scriptActive{false};
}

namespace {

struct Rule {
    std::string name;  // empty: any operation that can fail
    unsigned n;        // which call; 0: every one
    Verdict verdict;
    std::uint32_t code;  // the last error of a failing call
    unsigned seen = 0;

    bool matches(const CallRecord& call) {
        if (name.empty() ? !call.fallible : name != call.name) return false;
        ++seen;
        return n == 0 || seen == n;
    }
};

struct MissingEntry {
    std::string module, entryPoint;
};

bool sameModule(std::string_view left, std::string_view right) {
    return equalIgnoringCase(fromUtf8(left), fromUtf8(right));
}

std::mutex mutex;

}  // namespace

struct Script::State {
    std::vector<Rule> rules;
    std::vector<MissingEntry> missing;
    std::vector<CallRecord> calls;
};

namespace {
Script* active = nullptr;
}

struct ScriptAccess {
    static Script::State& state(const Script& script) { return *script.state_; }
};

namespace detail {

std::string argumentText(const char* text) {
    return text == nullptr ? "null" : "\"" + std::string(text) + "\"";
}

std::string argumentText(const wchar_t* text) {
    return text == nullptr ? "null" : "\"" + toUtf8(text) + "\"";
}

std::string argumentText(const void* pointer) {
    return pointer == nullptr ? "null" : "pointer";
}

std::string argumentText(const Bytes& bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    const auto* const first = static_cast<const unsigned char*>(bytes.first);
    for (std::size_t i = 0; first != nullptr && i < bytes.count; ++i) {
        text += digits[first[i] >> 4];
        text += digits[first[i] & 15];
    }
    return first != nullptr ? text : "null";
}

Verdict consult(const char* name, Fallible fallible, std::initializer_list<std::string> arguments) {
    const std::lock_guard lock(mutex);
    if (active == nullptr) return {};
    auto& state = ScriptAccess::state(*active);
    state.calls.push_back({name, arguments, fallible == Fallible::Yes});
    Verdict verdict;
    for (auto& rule : state.rules) {
        if (!rule.matches(state.calls.back()) || verdict) continue;
        verdict = rule.verdict;
        if (rule.code != 0) SetLastError(rule.code);
    }
    return verdict;
}

bool isMissing(std::string_view module, std::string_view entryPoint) {
    if (!scriptActive.load(std::memory_order_relaxed)) return false;
    const std::lock_guard lock(mutex);
    if (active == nullptr) return false;
    const auto& missing = ScriptAccess::state(*active).missing;
    return std::any_of(missing.begin(), missing.end(), [&](const MissingEntry& entry) {
        return entry.entryPoint == entryPoint && sameModule(entry.module, module);
    });
}

}  // namespace detail

Script::Script() : state_(std::make_unique<State>()) {
    const std::lock_guard lock(mutex);
    active = this;
    detail::scriptActive.store(true, std::memory_order_relaxed);
}

Script::~Script() {
    const std::lock_guard lock(mutex);
    detail::scriptActive.store(false, std::memory_order_relaxed);
    active = nullptr;
}

void Script::fail(std::string_view name, std::uint32_t code, unsigned n) {
    const std::lock_guard lock(mutex);
    state_->rules.push_back({std::string(name), n, Verdict::failing(), code});
}

void Script::failNth(unsigned n, std::uint32_t code) {
    fail("", code, n);
}

void Script::answer(std::string_view name, std::uintptr_t value, unsigned n) {
    const std::lock_guard lock(mutex);
    state_->rules.push_back({std::string(name), n, Verdict::answering(value), 0});
}

void Script::missing(std::string_view module, std::string_view entryPoint) {
    const std::lock_guard lock(mutex);
    state_->missing.push_back({std::string(module), std::string(entryPoint)});
}

std::vector<CallRecord> Script::calls() const {
    const std::lock_guard lock(mutex);
    return state_->calls;
}

std::vector<std::string> Script::texts() const {
    std::vector<std::string> result;
    for (const auto& call : calls()) result.push_back(call.text());
    return result;
}

unsigned Script::count(std::string_view name) const {
    const auto made = calls();
    return static_cast<unsigned>(std::ranges::count(made, name, &CallRecord::name));
}

}  // namespace machine
