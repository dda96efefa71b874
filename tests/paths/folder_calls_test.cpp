// Which platform calls the folders and the temporary names make, and what comes of their failures.
#include <gmock/gmock.h>
#include <jw32/folders.h>
#include <jw32/temporary_files.h>
#include <shlobj.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <thread>

#include "machine/machine.h"
#include "support/failure_sweep.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"

namespace {

using testing::ElementsAre;

TEST(ModulePathCalls, TellTheBareDriveOrNoFolder) {
    auto machine = machine::current();
    const auto program = std::filesystem::canonical("/proc/self/exe");
    machine.drives.push_back({.letter = 'M', .folder = program.parent_path().string()});
    const machine::Installed installed(machine);
    machine::Script script;
    char buffer[MAX_PATH] = "";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, MAX_PATH), 1);
    EXPECT_STREQ(buffer, "M:");
    script.fail("GetModuleFileNameA", ERROR_MOD_NOT_FOUND);
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, MAX_PATH), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_THAT(script.texts(), testing::Each("GetModuleFileNameA(null, 260)"));
}

class FolderPathCalls : public testing::Test {
  protected:
    // Asks for a folder, and tells the calls made for it, as many as counted.
    std::vector<std::string> asks(int result, std::ptrdiff_t count) {
        const auto former = script_.texts().size();
        EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer_, MAX_PATH), result);
        const auto texts = script_.texts();
        const auto first = texts.begin() + static_cast<std::ptrdiff_t>(former);
        return {first, first + std::min(count, texts.end() - first)};
    }
    machine::Script script_;
    char buffer_[MAX_PATH] = "text";
    const std::string shell_ = "LoadLibraryA(\"Shell32.dll\")", release_ = "FreeLibrary(pointer)";
    const std::string older_ = "LoadLibraryA(\"SHFolder.dll\")";
    const std::string lookUp_ = "GetProcAddress(pointer, \"SHGetFolderPathA\")";
    const std::string current_ = "SHGetFolderPathA(null, 32773, null, 0, pointer)";
    const std::string default_ = "SHGetFolderPathA(null, 32773, null, 1, pointer)";
};

TEST_F(FolderPathCalls, LoadTheModuleForEachQuestion) {
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer_, MAX_PATH - 1), 0);
    EXPECT_TRUE(script_.texts().empty());
    script_.fail("CreateDirectoryW", ERROR_ACCESS_DENIED, 0);
    const auto texts = asks(1, 5);
    const auto append = "PathAddBackslashA(\"" + std::string(buffer_, strlen(buffer_) - 1) + "\")";
    EXPECT_THAT(texts, ElementsAre(shell_, lookUp_, current_, release_, append));
    EXPECT_GE(script_.count("CreateDirectoryW"), 1u);
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, nullptr, MAX_PATH), 0) << "the platform refuses";
}

TEST_F(FolderPathCalls, FallBackToTheOtherModule) {
    script_.missing("shell32.dll", "SHGetFolderPathA");
    EXPECT_THAT(asks(1, 6), ElementsAre(shell_, lookUp_, release_, older_, lookUp_, current_));
}

TEST_F(FolderPathCalls, LeaveTheBufferAloneWhereNoModuleHelps) {
    script_.missing("shell32.dll", "SHGetFolderPathA");
    script_.missing("shfolder.dll", "SHGetFolderPathA");
    EXPECT_THAT(asks(0, 9), ElementsAre(shell_, lookUp_, release_, older_, lookUp_, release_));
    script_.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND, 2);
    EXPECT_THAT(asks(0, 9), ElementsAre(shell_, lookUp_, release_, older_));
    script_.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND);
    EXPECT_THAT(asks(0, 9), ElementsAre(shell_));
    EXPECT_STREQ(buffer_, "text");
}

TEST_F(FolderPathCalls, AskForTheDefaultPlaceSecond) {
    constexpr std::uintptr_t fails = 0x80004005, runs = 99;
    const struct {
        std::uintptr_t first, second;  // what the platform answers
        int result;
        unsigned asked;
    } rows[] = {
        {1, runs, 1, 2}, {fails, runs, 1, 2}, {1, 1, 0, 2}, {1, fails, 0, 2}, {2, runs, 0, 1},
    };
    for (const auto& row : rows) {
        script_.answer("SHGetFolderPathA", row.first, 1);
        if (row.second != runs) script_.answer("SHGetFolderPathA", row.second, 2);
        const std::vector<std::string> once = {shell_, lookUp_, current_, release_};
        const std::vector<std::string> twice = {shell_, lookUp_, current_, default_, release_};
        EXPECT_EQ(asks(row.result, row.asked + 3), row.asked == 1 ? once : twice) << row.first;
    }
}

class TemporaryCalls : public ScratchDrives {
  protected:
    // The text that the operation gives under a script, which its length fits.
    static std::string directory() {
        char buffer[300] = "former";
        const DWORD length = Jw32TempDirectory(buffer, sizeof buffer);
        EXPECT_EQ(length, strlen(buffer));
        return buffer;
    }
    TemporaryVariables kept_;
};

TEST_F(TemporaryCalls, AskForTheLongFormOnceAndGoOnWithoutIt) {
    const auto gives = [this](const char* text, auto arrange) {
        kept_.set("C:\\", "");
        machine::Script script;
        arrange(script);
        EXPECT_EQ(directory(), text);
        return script.texts();
    };
    EXPECT_THAT(gives("C:\\", [](auto&) {}),
                ElementsAre("_dupenv_s(\"TMP\")", "LoadLibraryA(\"Kernel32.dll\")",
                            "GetProcAddress(pointer, \"GetLongPathNameA\")",
                            "GetLongPathNameA(\"C:\\\", 520)", "FreeLibrary(pointer)"));
    gives("C:\\", [](auto& script) { script.missing("kernel32.dll", "GetLongPathNameA"); });
    gives("C:\\", [](auto& script) { script.fail("GetLongPathNameA", ERROR_ACCESS_DENIED); });
    gives("C:\\", [](auto& script) { script.answer("GetLongPathNameA", 521); });
    gives("", [](auto& script) { script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND); });
}

TEST_F(TemporaryCalls, CompleteTheEnvironmentInOrder) {
    const std::string own = "C:\\Windows\\System32\\~Temp";
    const char *const readTmp = "_dupenv_s(\"TMP\")", *const readTemp = "_dupenv_s(\"TEMP\")";
    kept_.set("", "");
    machine::Script script;
    script.fail("CreateDirectoryW", ERROR_ACCESS_DENIED, 0);
    EXPECT_EQ(directory(), own) << "it is used even if it is not made";
    auto texts = script.texts();
    std::erase_if(texts, [](const auto& text) {  // the levels above, and what is no step
        const bool isStep = text.find("env") != text.npos || text.starts_with("GetSystem");
        return !isStep && !text.ends_with("~Temp\", null)");
    });
    EXPECT_THAT(texts,
                ElementsAre(readTmp, readTemp, "GetSystemDirectoryA(260)",
                            "CreateDirectoryW(\"" + own + "\", null)",
                            "_putenv(\"TMP=" + own + "\")", "_putenv(\"TEMP=" + own + "\")"));
    kept_.set("", "C:\\Windows");
    const auto former = static_cast<std::ptrdiff_t>(script.texts().size());
    EXPECT_EQ(directory(), "C:\\Windows");
    texts = script.texts();
    EXPECT_THAT(std::vector(texts.begin() + former, texts.begin() + former + 3),
                ElementsAre(readTmp, readTemp, "_putenv(\"TMP=C:\\Windows\")"));
}

TEST_F(TemporaryCalls, GiveNothingWithoutASystemDirectory) {
    kept_.set("", "");
    for (const std::uintptr_t length : {0u, 3u, 300u}) {
        machine::Script script;
        script.answer("GetSystemDirectoryA", length);
        std::string buffer(8, 'x');
        EXPECT_EQ(Jw32TempDirectory(buffer.data(), 8), 0u);
        EXPECT_EQ(buffer, std::string(8, '\0'));
        EXPECT_EQ(script.count("_putenv"), 0u);
    }
    for (const std::size_t length : {255u, 254u}) {
        auto machine = machine::current();
        machine.windowsDirectory = "C:\\" + std::string(length - 12, 'w');
        const machine::Installed installed(machine);
        const machine::Script script;
        EXPECT_EQ(directory().size(), length == 254 ? 260u : 0u);
        EXPECT_EQ(script.count("_putenv"), length == 254 ? 2u : 0u);
    }
}

class TemporaryFileCalls : public TemporaryCalls {
  protected:
    static void* create(const std::string& folder, Triple& triple) {
        return Jw32CreateTempFile(folder.c_str(), "p", GENERIC_WRITE, CREATE_NEW,
                                  FILE_FLAG_DELETE_ON_CLOSE, 0, &triple.code, triple.text,
                                  triple.size);
    }
    Triple triple_;
};

TEST_F(TemporaryFileCalls, ThatFindNoNameClearTheBuffer) {
    machine::Script script;
    script.fail("_tempnam", ERROR_NOT_ENOUGH_MEMORY, 0);
    std::string buffer(8, 'x');
    EXPECT_EQ(Jw32TempFilename(buffer.data(), 8, std::string(300, 'd').c_str(), nullptr), 0u);
    EXPECT_EQ(buffer, std::string(8, '\0'));
    EXPECT_THAT(script.texts(), ElementsAre("_tempnam(\"" + std::string(260, 'd') + "\", null)"));
    EXPECT_EQ(create("C:\\a", triple_), INVALID_HANDLE_VALUE);
    EXPECT_EQ(script.texts()[1], "_tempnam(\"C:\\a\", \"p\")");
    EXPECT_TRUE(triple_.tells(ERROR_PATH_NOT_FOUND)) << triple_;
}

TEST_F(TemporaryFileCalls, OfANameThatIsTooLongLeaveTheTripleAlone) {
    for (const std::size_t length : {260u, 259u}) {
        machine::Script script;
        const auto name = "Q:\\" + std::string(length - 3, 'n');
        script.answer("_tempnam", reinterpret_cast<std::uintptr_t>(strdup(name.c_str())));
        EXPECT_EQ(create(c(), triple_), INVALID_HANDLE_VALUE);
        EXPECT_EQ(script.count("CreateFileW"), length == 259 ? 1u : 0u);
        EXPECT_EQ(triple_.code, length == 259 ? DWORD{ERROR_PATH_NOT_FOUND} : Triple().code);
    }
}

TEST_F(TemporaryFileCalls, ThatFailAreReportedAndLeaveNothingOpen) {
    const auto act = [this](Triple& triple) {
        void* const file = create(c(), triple);
        return Outcome{file == INVALID_HANDLE_VALUE, std::shared_ptr<void>(file, CloseHandle)};
    };
    // Without a name, the platform refuses the empty one.
    sweepFailures(
        {"Jw32CreateTempFile", [&] { return act; }, {}, {{"_tempnam", ERROR_PATH_NOT_FOUND}}});
}

TEST_F(TemporaryCalls, OfTwoProcessesWithEightThreadsEachNeverMeet) {
    constexpr std::size_t threads = 8, each = 250, all = 2 * threads * each;
    const auto folder = d();  // of the parent, by whose number it is called
    kept_.set("", "");
    using Name = char[MAX_PATH];
    auto* const names = static_cast<Name*>(::mmap(
        nullptr, all * sizeof(Name), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(names, MAP_FAILED);
    const pid_t child = ::fork();
    std::vector<std::thread> running;
    for (std::size_t thread = 0; thread < threads; ++thread) {
        running.emplace_back([&, first = ((child == 0 ? threads : 0) + thread) * each] {
            for (std::size_t i = 0; i < each; ++i)
                Jw32TempFilename(names[first + i], MAX_PATH, folder.c_str(), "jwt");
        });
    }
    for (auto& thread : running) thread.join();
    if (child == 0) std::_Exit(EXIT_SUCCESS);
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(std::set<std::string>(names, names + all).size(), all);
    ::munmap(names, all * sizeof(Name));
}

}  // namespace
