// The part of a temporary file's name that nobody can guess.
#include "host/temporary_names.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>

namespace machine {

namespace {

constexpr std::string_view digits = "0123456789abcdefghijklmnopqrstuvwxyz";
constexpr std::size_t digitCount = 13;  // as many as 64 bits take

std::array<std::atomic<std::uint64_t>, 1024> givenNumbers{};
std::atomic<std::size_t> givenCount{0};

// 0: there is none.
std::uint64_t randomNumber() {
    std::uint64_t number = 0;
    ssize_t length = 0;
    do {
        length = ::getrandom(&number, sizeof number, 0);
    } while (length < 0 && errno == EINTR);
    return length == sizeof number ? number : 0;
}

std::uint64_t numberOf(std::string_view text) {
    std::uint64_t number = 0;
    for (const char character : text) {
        const auto digit = digits.find(character);
        if (digit == digits.npos) return 0;
        number = number * digits.size() + digit;
    }
    return number;
}

}  // namespace

std::string newTemporaryName() {
    const auto number = randomNumber();
    if (number == 0) return {};
    const auto place = givenCount.fetch_add(1, std::memory_order_relaxed) % givenNumbers.size();
    givenNumbers[place].store(number, std::memory_order_relaxed);
    std::string text(digitCount, '0');
    auto left = number;
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, left /= digits.size()) {
        *digit = digits[left % digits.size()];
    }
    return text;
}

bool isTemporaryName(std::string_view name) {
    if (name.size() < digitCount) return false;
    const auto number = numberOf(name.substr(name.size() - digitCount));
    return number != 0 && std::any_of(givenNumbers.begin(), givenNumbers.end(),
                                      [&](const auto& given) { return given == number; });
}

}  // namespace machine
