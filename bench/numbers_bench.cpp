// Conversions and text forms of angles, and CRC-32 beside a bare table loop.
#include <benchmark/benchmark.h>
#include <jw32/jw32.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <vector>

namespace {

// Angles all over the circle, so that no branch is always taken.
std::vector<double> someRadians() {
    std::vector<double> result;
    for (int i = 0; i < 1024; ++i) result.push_back(std::sin(i) * 2 * std::numbers::pi);
    return result;
}

const std::vector<double> radians = someRadians();

void partsOfRadians(benchmark::State& state) {
    int sign, degrees, minutes;
    double seconds;
    for (auto _ : state) {
        for (const double angle : radians) {
            Jw32Rad2DMS(angle, sign, degrees, minutes, seconds, 2, 0);
            benchmark::DoNotOptimize(seconds);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(radians.size()));
}

void packRadians(benchmark::State& state) {
    for (auto _ : state) {
        for (const double angle : radians) {
            benchmark::DoNotOptimize(Jw32Rad2DMS(angle, 6, 1));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(radians.size()));
}

using Text = char[64];

void writeByJw32(Text& text, double radian) {
    const CJw32Angle angle(radian, CJw32Angle::eAngleTypeRad, CJw32Angle::eAngleRangeNone);
    angle.AngleToString(text, sizeof text, CJw32Angle::eAngleTypeDmsMarked, 2);
}

// What a program without the library would do for the same text.
void writeBySnprintf(Text& text, double radian) {
    const double degrees = std::fabs(radian * 180 / std::numbers::pi);
    int whole = static_cast<int>(degrees);
    const double rest = (degrees - whole) * 60;
    int minutes = static_cast<int>(rest);
    double seconds = (rest - minutes) * 60;
    if (seconds >= 59.995) {
        seconds = 0;
        whole += ++minutes / 60;
        minutes %= 60;
    }
    std::snprintf(text, sizeof text, "%s%d %d' %.2f\"", radian < 0 ? "-" : "", whole, minutes,
                  seconds);
}

bool areTextsEqual() {
    Text one, other;
    return std::all_of(radians.begin(), radians.end(), [&](double radian) {
        writeByJw32(one, radian);
        writeBySnprintf(other, radian);
        return std::strcmp(one, other) == 0;
    });
}

template <void (*write)(Text&, double)>
void angleText(benchmark::State& state) {
    if (!areTextsEqual()) state.SkipWithError("the texts differ");
    Text text;
    for (auto _ : state) {
        for (const double radian : radians) {
            write(text, radian);
            benchmark::DoNotOptimize(text);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(radians.size()));
}

constexpr std::size_t blockSize = 1 << 20;

void crcByJw32(benchmark::State& state) {
    std::vector<unsigned char> block(blockSize, 'x');
    for (auto _ : state) {
        benchmark::DoNotOptimize(Jw32CrcMemory(block.data(), static_cast<int>(block.size()), 0));
    }
    state.SetBytesProcessed(state.iterations() * int64_t{blockSize});
}

void crcByTable(benchmark::State& state) {
    std::array<std::uint32_t, 256> table;
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit) {
            table[i] = (table[i] >> 1) ^ ((table[i] & 1) != 0 ? 0xEDB88320 : 0);
        }
    }
    const std::vector<unsigned char> block(blockSize, 'x');
    for (auto _ : state) {
        std::uint32_t crc = 0xFFFFFFFF;
        for (const unsigned char byte : block) crc = (crc >> 8) ^ table[(crc ^ byte) & 0xFF];
        benchmark::DoNotOptimize(~crc);
    }
    state.SetBytesProcessed(state.iterations() * int64_t{blockSize});
}

BENCHMARK(partsOfRadians)->Name("jw32/radians_to_parts_x1024");
BENCHMARK(packRadians)->Name("jw32/radians_to_packed_x1024");
BENCHMARK(angleText<writeByJw32>)->Name("jw32/angle_text_x1024");
BENCHMARK(angleText<writeBySnprintf>)->Name("plain/angle_text_x1024");
BENCHMARK(crcByJw32)->Name("jw32/crc32_1_mib");
BENCHMARK(crcByTable)->Name("plain/crc32_1_mib");

}  // namespace
