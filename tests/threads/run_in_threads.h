// Many threads that do the same for a while.
#pragma once

#include <chrono>
#include <random>
#include <thread>
#include <vector>

// Each thread carries out `step(number of the thread, a random number)` for about a second.
template <class Step>
void runInThreads(Step step) {
    constexpr unsigned threadCount = 8;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    std::vector<std::jthread> threads;
    for (unsigned number = 0; number < threadCount; ++number) {
        threads.emplace_back([=] {
            std::minstd_rand random(number + 1);
            while (std::chrono::steady_clock::now() < end) step(number, random() >> 8);
        });
    }
}
