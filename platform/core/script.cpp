// The script in force, its rules, and the record of the calls made under it.
#include "core/script.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "core/testing.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace detail {
std::atomic<bool> scriptActive{false};
}

namespace {

std::mutex mutex;  // guards the script in force and what is in it
Script* active = nullptr;
IdleRuleListener idleRuleListener = nullptr;

bool sameModule(std::string_view left, std::string_view right) {
    return equalIgnoringCase(fromUtf8(left), fromUtf8(right));
}

template <class Character>
bool standsForNumber(const Character* text) {
    constexpr std::uintptr_t lowestAddress = 0x10000;
    return reinterpret_cast<std::uintptr_t>(text) < lowestAddress;
}

template <class Character>
std::string numberText(const Character* text) {
    const auto number = reinterpret_cast<std::uintptr_t>(text);
    return number == 0 ? "null" : "#" + std::to_string(number);
}

}  // namespace

namespace detail {

std::string argumentText(const char* text) {
    return standsForNumber(text) ? numberText(text) : "\"" + std::string(text) + "\"";
}

std::string argumentText(const wchar_t* text) {
    return standsForNumber(text) ? numberText(text) : "\"" + toUtf8(text) + "\"";
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

Decision consult(CallRecord call) {
    const std::lock_guard lock(mutex);
    if (active == nullptr) return {};
    active->calls_.push_back(std::move(call));
    return active->decide(active->calls_.back());
}

bool isMissing(std::string_view module, std::string_view entryPoint) {
    if (!isScripted()) return false;
    const std::lock_guard lock(mutex);
    return active != nullptr && active->isMissing(module, entryPoint);
}

}  // namespace detail

Script::Script() {
    const std::lock_guard lock(mutex);
    active = this;
    detail::scriptActive.store(true, std::memory_order_relaxed);
}

Script::~Script() {
    {
        const std::lock_guard lock(mutex);
        detail::scriptActive.store(false, std::memory_order_relaxed);
        active = nullptr;
    }
    if (idleRuleListener == nullptr) return;
    for (const auto& rule : idleRules()) idleRuleListener(rule);
}

// Every rule counts the call; the first one that is about it decides it.
detail::Decision Script::decide(const CallRecord& call) {
    Rule* decisive = nullptr;
    for (auto& rule : rules_) {
        const bool counts = rule.name.empty() ? call.canFail() : rule.name == call.name;
        const bool applies = counts && rule.which.contain(++rule.seen);
        if (applies && decisive == nullptr) decisive = &rule;
    }
    if (decisive == nullptr) return {};
    decisive->hasFired = true;
    return decisive->decision;
}

bool Script::isMissing(std::string_view module, std::string_view entryPoint) {
    for (auto& entry : missing_) {
        if (entry.entryPoint != entryPoint || !sameModule(entry.module, module)) continue;
        entry.hasFired = true;
        return true;
    }
    return false;
}

std::vector<std::string> Script::idleRules() const {
    std::vector<std::string> idle;
    for (const auto& rule : rules_) {
        if (rule.hasFired) continue;
        idle.push_back((rule.name.empty() ? "any operation" : rule.name) + ", " +
                       rule.which.text());
    }
    for (const auto& entry : missing_) {
        if (!entry.hasFired) idle.push_back(entry.module + " without " + entry.entryPoint);
    }
    return idle;
}

void Script::addRule(Rule rule) {
    const std::lock_guard lock(mutex);
    rules_.push_back(std::move(rule));
}

void Script::fail(std::string_view name, std::uint32_t code, Calls which) {
    addRule({std::string(name), which, {detail::Decision::Kind::Fails, code}});
}

void Script::failNth(unsigned n, std::uint32_t code) {
    fail("", code, n);
}

void Script::missing(std::string_view module, std::string_view entryPoint) {
    const std::lock_guard lock(mutex);
    missing_.push_back({std::string(module), std::string(entryPoint)});
}

std::vector<CallRecord> Script::calls() const {
    const std::lock_guard lock(mutex);
    return calls_;
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

void listenForIdleRules(IdleRuleListener listener) {
    idleRuleListener = listener;
}

}  // namespace machine
