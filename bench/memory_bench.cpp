// Memory blocks and mapped files beside the host's own calls.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <jw32/jw32.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t fileSize = std::size_t{1} << 30, pieceSize = std::size_t{16} << 20;

// A file of 1 GiB, removed at the end. All who read it read the same pages of the host's cache.
class LargeFile {
  public:
    LargeFile() {
        const std::string block(1 << 20, 'x');
        std::ofstream file(path_, std::ios::binary);
        for (std::size_t done = 0; done < fileSize; done += block.size()) file << block;
    }
    ~LargeFile() { fs::remove(path_); }
    LargeFile(const LargeFile&) = delete;
    LargeFile& operator=(const LargeFile&) = delete;

    std::string plain() const { return path_.string(); }
    std::string jw32() const {
        auto path = "Z:" + plain();
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }

  private:
    fs::path path_ = fs::temp_directory_path() / ("jw32-bench-1g-" + std::to_string(::getpid()));
};

const LargeFile& largeFile() {
    static const LargeFile file;
    return file;
}

void failed(benchmark::State& state) {
    state.SkipWithError("the operation failed");
}

std::uint64_t sumOf(const void* bytes, std::size_t size) {
    const auto* const words = static_cast<const std::uint64_t*>(bytes);
    return std::accumulate(words, words + size / sizeof *words, std::uint64_t{0});
}

void finish(benchmark::State& state, std::uint64_t sum) {
    benchmark::DoNotOptimize(sum);
    state.SetBytesProcessed(state.iterations() * int64_t{fileSize});
}

void readJw32(benchmark::State& state) {
    const auto name = largeFile().jw32();
    std::uint64_t sum = 0;
    for (auto _ : state) {
        CJw32MmFile file;
        DWORD mapped = 0;
        if (file.Open(CJw32MmFile::eRead, name.c_str(), mapped) == nullptr) return failed(state);
        for (std::size_t at = 0; at < fileSize; at += pieceSize) {
            auto offset = static_cast<DWORD>(at), length = DWORD{pieceSize};
            const void* const view = file.ReMap(offset, length);
            if (view == nullptr) return failed(state);
            sum += sumOf(view, length);
        }
    }
    finish(state, sum);
}

void mapPlain(benchmark::State& state) {
    const auto name = largeFile().plain();
    std::uint64_t sum = 0;
    for (auto _ : state) {
        const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
        for (std::size_t at = 0; at < fileSize; at += pieceSize) {
            void* const view =
                ::mmap(nullptr, pieceSize, PROT_READ, MAP_SHARED, file, static_cast<off_t>(at));
            if (view == MAP_FAILED) return failed(state);
            sum += sumOf(view, pieceSize);
            ::munmap(view, pieceSize);
        }
        ::close(file);
    }
    finish(state, sum);
}

void readPlain(benchmark::State& state) {
    const auto name = largeFile().plain();
    std::vector<std::uint64_t> buffer(pieceSize / sizeof(std::uint64_t));
    std::uint64_t sum = 0;
    for (auto _ : state) {
        const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
        for (std::size_t at = 0; at < fileSize; at += pieceSize) {
            if (::read(file, buffer.data(), pieceSize) != ssize_t{pieceSize}) return failed(state);
            sum += sumOf(buffer.data(), pieceSize);
        }
        ::close(file);
    }
    finish(state, sum);
}

void blockJw32(benchmark::State& state) {
    CJw32Memory memory;
    for (auto _ : state) {
        unsigned char* const block = memory.Open(static_cast<unsigned int>(state.range(0)));
        if (block == nullptr) return failed(state);
        block[0] = 1;
        memory.Close();
    }
}

void blockByCalloc(benchmark::State& state) {
    for (auto _ : state) {
        auto* const block =
            static_cast<char*>(std::calloc(static_cast<std::size_t>(state.range(0)), 1));
        if (block == nullptr) return failed(state);
        block[0] = 1;
        benchmark::DoNotOptimize(block);
        std::free(block);
    }
}

void blockByMmap(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        void* const block =
            ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (block == MAP_FAILED) return failed(state);
        *static_cast<char*>(block) = 1;
        ::munmap(block, size);
    }
}

constexpr int smallBlock = 1 << 10, largeBlock = 1 << 20;

BENCHMARK(mapPlain)->Name("plain/mapped_read_1g_beside_mmap")->Unit(benchmark::kMillisecond);
BENCHMARK(readJw32)->Name("jw32/mapped_read_1g_beside_mmap")->Unit(benchmark::kMillisecond);
BENCHMARK(readPlain)->Name("plain/mapped_read_1g_beside_read")->Unit(benchmark::kMillisecond);
BENCHMARK(readJw32)->Name("jw32/mapped_read_1g_beside_read")->Unit(benchmark::kMillisecond);
BENCHMARK(blockByCalloc)->Name("plain/memory_beside_calloc")->Arg(smallBlock)->Arg(largeBlock);
BENCHMARK(blockJw32)->Name("jw32/memory_beside_calloc")->Arg(smallBlock)->Arg(largeBlock);
BENCHMARK(blockByMmap)->Name("plain/memory_beside_mmap")->Arg(smallBlock)->Arg(largeBlock);
BENCHMARK(blockJw32)->Name("jw32/memory_beside_mmap")->Arg(smallBlock)->Arg(largeBlock);

}  // namespace
