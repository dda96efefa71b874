// File operations beside the plain POSIX calls that do the same, on the same files.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <jw32/jw32.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

// A folder of its own with one file of 1 MiB; removed at the end.
class Workplace {
  public:
    Workplace() {
        fs::create_directories(folder_);
        std::ofstream(folder_ / "data.bin") << std::string(1 << 20, 'x');
    }
    ~Workplace() { fs::remove_all(folder_); }
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::string plain(const std::string& name) const { return (folder_ / name).string(); }
    // The same file by drive Z:, which is the host's root.
    std::string jw32(const std::string& name) const {
        auto path = "Z:" + plain(name);
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    // A folder with `count` files beside the one that gets looked for.
    void fill(const std::string& folder, int count) const {
        if (!fs::create_directories(folder_ / folder)) return;
        for (int i = 0; i < count; ++i) {
            std::ofstream(folder_ / folder / ("file" + std::to_string(i) + ".txt"));
        }
    }

  private:
    fs::path folder_ = fs::temp_directory_path() / ("jw32-bench-" + std::to_string(::getpid()));
};

const Workplace& workplace() {
    static const Workplace place;
    return place;
}

constexpr std::size_t pageSize = 4096;
constexpr DWORD readShare = FILE_SHARE_READ | FILE_SHARE_WRITE;

void failed(benchmark::State& state) {
    state.SkipWithError("the operation failed");
}

void openClosePlain(benchmark::State& state) {
    const auto name = workplace().plain("data.bin");
    for (auto _ : state) {
        const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0) return failed(state);
        ::close(file);
    }
}

void openCloseJw32(benchmark::State& state) {
    const auto name = workplace().jw32("data.bin");
    for (auto _ : state) {
        void* const file = Jw32FileOpen(name.c_str(), GENERIC_READ, OPEN_EXISTING, 0, readShare);
        if (file == INVALID_HANDLE_VALUE) return failed(state);
        CloseHandle(file);
    }
}

void readPlain(benchmark::State& state) {
    const int file = ::open(workplace().plain("data.bin").c_str(), O_RDONLY | O_CLOEXEC);
    std::array<char, pageSize> page;
    for (auto _ : state) {
        if (::lseek(file, 0, SEEK_SET) != 0) return failed(state);
        for (int i = 0; i < 64; ++i) {
            if (::read(file, page.data(), page.size()) != ssize_t{pageSize}) return failed(state);
        }
    }
    ::close(file);
    state.SetBytesProcessed(state.iterations() * 64 * int64_t{pageSize});
}

void readJw32(benchmark::State& state) {
    void* const file = Jw32FileOpen(workplace().jw32("data.bin").c_str(), GENERIC_READ,
                                    OPEN_EXISTING, 0, readShare);
    std::array<char, pageSize> page;
    for (auto _ : state) {
        if (Jw32FileSeek(file, 0) != 1) return failed(state);
        for (int i = 0; i < 64; ++i) {
            if (Jw32FileRead(file, page.data(), pageSize) != 1) return failed(state);
        }
    }
    CloseHandle(file);
    state.SetBytesProcessed(state.iterations() * 64 * int64_t{pageSize});
}

void writePlain(benchmark::State& state) {
    const int file =
        ::open(workplace().plain("plain.out").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    const std::array<char, pageSize> page{};
    for (auto _ : state) {
        if (::lseek(file, 0, SEEK_SET) != 0) return failed(state);
        for (int i = 0; i < 64; ++i) {
            if (::write(file, page.data(), page.size()) != ssize_t{pageSize}) return failed(state);
        }
    }
    ::close(file);
    state.SetBytesProcessed(state.iterations() * 64 * int64_t{pageSize});
}

void writeJw32(benchmark::State& state) {
    void* const file = Jw32FileCreate(workplace().jw32("jw32.out").c_str(), GENERIC_WRITE,
                                      CREATE_ALWAYS, 0, readShare);
    const std::array<char, pageSize> page{};
    for (auto _ : state) {
        if (Jw32FileSeek(file, 0) != 1) return failed(state);
        for (int i = 0; i < 64; ++i) {
            if (Jw32FileWrite(file, page.data(), pageSize) != 1) return failed(state);
        }
    }
    CloseHandle(file);
    state.SetBytesProcessed(state.iterations() * 64 * int64_t{pageSize});
}

std::string folderOf(benchmark::State& state) {
    const auto folder = "folder" + std::to_string(state.range(0));
    workplace().fill(folder, static_cast<int>(state.range(0)));
    return folder;
}

void findPlain(benchmark::State& state) {
    const auto name = workplace().plain(folderOf(state) + "/file7.txt");
    struct stat found {};
    for (auto _ : state) {
        if (::stat(name.c_str(), &found) != 0) return failed(state);
    }
}

void findJw32(benchmark::State& state) {
    const auto name = workplace().jw32(folderOf(state) + "/file7.txt");
    for (auto _ : state) {
        if (Jw32FileFind(name.c_str()) != 1) return failed(state);
    }
}

// A name that is not there, and one that is there in another case, after a first look.
void missingPlain(benchmark::State& state) {
    const auto name = workplace().plain(folderOf(state) + "/missing.txt");
    struct stat found {};
    for (auto _ : state) {
        if (::stat(name.c_str(), &found) == 0) return failed(state);
    }
}

void lookUpJw32(benchmark::State& state, const char* file, int wanted) {
    const auto name = workplace().jw32(folderOf(state) + file);
    Jw32FileFind(name.c_str());
    for (auto _ : state) {
        if (Jw32FileFind(name.c_str()) != wanted) return failed(state);
    }
}

void missingJw32(benchmark::State& state) {
    lookUpJw32(state, "/missing.txt", 0);
}

void otherCaseJw32(benchmark::State& state) {
    lookUpJw32(state, "/FILE7.TXT", 1);
}

// The time for each of so many files that are created in a folder of their own.
template <class Create>
void createFiles(benchmark::State& state, Create create) {
    using Clock = std::chrono::steady_clock;
    const auto count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        fs::create_directory(workplace().plain("made"));
        const auto begin = Clock::now();
        bool done = true;
        for (int i = 0; i < count; ++i) done &= create("made/file" + std::to_string(i) + ".txt");
        const std::chrono::duration<double> taken = Clock::now() - begin;
        state.SetIterationTime(taken.count() / count);
        fs::remove_all(workplace().plain("made"));
        if (!done) return failed(state);
    }
}

void createPlain(benchmark::State& state) {
    createFiles(state, [](const std::string& name) {
        const auto path = workplace().plain(name);
        const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        return file >= 0 && ::close(file) == 0;
    });
}

void createJw32(benchmark::State& state) {
    createFiles(state, [](const std::string& name) {
        const auto path = workplace().jw32(name);
        return CloseHandle(Jw32FileCreate(path.c_str(), GENERIC_READ | GENERIC_WRITE, CREATE_NEW, 0,
                                          readShare)) != 0;
    });
}

void movePlain(benchmark::State& state) {
    const auto one = workplace().plain("one"), other = workplace().plain("other");
    std::ofstream(one).put('x');
    for (auto _ : state) {
        if (::rename(one.c_str(), other.c_str()) != 0) return failed(state);
        if (::rename(other.c_str(), one.c_str()) != 0) return failed(state);
    }
}

void moveJw32(benchmark::State& state) {
    const auto one = workplace().jw32("jw32-one"), other = workplace().jw32("jw32-other");
    std::ofstream(workplace().plain("jw32-one")).put('x');
    for (auto _ : state) {
        if (Jw32FileMove(one.c_str(), other.c_str()) != 1) return failed(state);
        if (Jw32FileMove(other.c_str(), one.c_str()) != 1) return failed(state);
    }
}

BENCHMARK(openClosePlain)->Name("plain/open_close");
BENCHMARK(openCloseJw32)->Name("jw32/open_close");
BENCHMARK(readPlain)->Name("plain/read_4k_x64");
BENCHMARK(readJw32)->Name("jw32/read_4k_x64");
BENCHMARK(writePlain)->Name("plain/write_4k_x64");
BENCHMARK(writeJw32)->Name("jw32/write_4k_x64");
BENCHMARK(findPlain)->Name("plain/find")->Arg(10)->Arg(10000);
BENCHMARK(findJw32)->Name("jw32/find")->Arg(10)->Arg(10000);
BENCHMARK(missingPlain)->Name("plain/missing_name")->Arg(10000)->Arg(100000);
BENCHMARK(missingJw32)->Name("jw32/missing_name")->Arg(10000)->Arg(100000);
BENCHMARK(findPlain)->Name("plain/other_case")->Arg(10000)->Arg(100000);
BENCHMARK(otherCaseJw32)->Name("jw32/other_case")->Arg(10000)->Arg(100000);
BENCHMARK(createPlain)->Name("plain/create")->Arg(1000)->Arg(16000)->UseManualTime()->Iterations(1);
BENCHMARK(createJw32)->Name("jw32/create")->Arg(1000)->Arg(16000)->UseManualTime()->Iterations(1);
BENCHMARK(movePlain)->Name("plain/move_and_back");
BENCHMARK(moveJw32)->Name("jw32/move_and_back");

}  // namespace
