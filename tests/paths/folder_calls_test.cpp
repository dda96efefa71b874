// Which platform calls the folders and the temporary names make, and what comes of their failures.
#include <gmock/gmock.h>
#include <jw32/folders.h>
#include <jw32/frame.h>
#include <jw32/temporary_files.h>
#include <shlobj.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <thread>
#include <vector>

#include "machine/machine.h"
#include "machine/testing.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"
#include "support/triple.h"

namespace {

using testing::Each;
using testing::ElementsAre;

std::vector<std::string> texts(const machine::Script& script, std::size_t most) {
    std::vector<std::string> result;
    for (const auto& call : script.calls()) {
        if (result.size() < most) result.push_back(call.text());
    }
    return result;
}

TEST(ModulePathCalls, OfAModuleInTheRootOfADriveGiveTheBareDrive) {
    auto machine = machine::current();
    const auto program = std::filesystem::canonical("/proc/self/exe");
    machine.drives.push_back({.letter = 'M', .folder = program.parent_path().string()});
    const machine::Installed installed(machine);
    char buffer[MAX_PATH] = "";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, sizeof buffer), 1);
    EXPECT_STREQ(buffer, "M:");
}

TEST(ModulePathCalls, ThatFailGiveNoFolder) {
    machine::Script script;
    script.fail("GetModuleFileNameA", ERROR_MOD_NOT_FOUND);
    char buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_THAT(texts(script, 9), ElementsAre("GetModuleFileNameA(null, 260)"));
}

TEST(FolderPathCalls, LoadTheModuleForEachQuestion) {
    machine::Script script;
    char buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH - 1), 0);
    EXPECT_TRUE(script.calls().empty());
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH), 1);
    EXPECT_THAT(
        texts(script, 5),
        ElementsAre("LoadLibraryA(\"Shell32.dll\")",
                    "GetProcAddress(pointer, \"SHGetFolderPathA\")",
                    "SHGetFolderPathA(null, 32773, null, 0, pointer)", "FreeLibrary(pointer)",
                    "PathAddBackslashA(\"" + std::string(buffer, strlen(buffer) - 1) + "\")"));
    EXPECT_GE(script.count("CreateDirectoryW"), 1u);
    script.fail("CreateDirectoryW", ERROR_ACCESS_DENIED, 0);
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH), 1) << "not looked at";
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, nullptr, MAX_PATH), 0) << "the platform refuses";
}

TEST(FolderPathCalls, FallBackToTheOtherModule) {
    machine::Script script;
    script.missing("shell32.dll", "SHGetFolderPathA");
    char buffer[MAX_PATH] = "";
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH), 1);
    EXPECT_THAT(texts(script, 6),
                ElementsAre("LoadLibraryA(\"Shell32.dll\")",
                            "GetProcAddress(pointer, \"SHGetFolderPathA\")", "FreeLibrary(pointer)",
                            "LoadLibraryA(\"SHFolder.dll\")",
                            "GetProcAddress(pointer, \"SHGetFolderPathA\")",
                            "SHGetFolderPathA(null, 32773, null, 0, pointer)"));
}

TEST(FolderPathCalls, LeaveTheBufferAloneWhereNoModuleHelps) {
    const auto isRefused = [](auto arrange, unsigned loads, unsigned releases) {
        machine::Script script;
        arrange(script);
        char buffer[MAX_PATH] = "text";
        EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH), 0);
        EXPECT_STREQ(buffer, "text");
        EXPECT_EQ(script.count("LoadLibraryA"), loads);
        EXPECT_EQ(script.count("FreeLibrary"), releases);
    };
    isRefused([](auto& script) { script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND); }, 1, 0);
    isRefused(
        [](auto& script) {
            script.missing("shell32.dll", "SHGetFolderPathA");
            script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND, 2);
        },
        2, 1);
    isRefused(
        [](auto& script) {
            script.missing("shell32.dll", "SHGetFolderPathA");
            script.missing("shfolder.dll", "SHGetFolderPathA");
        },
        2, 2);
}

TEST(FolderPathCalls, OfAMissingFolderGiveSFalse) {
    char path[MAX_PATH] = "text";
    EXPECT_EQ(SHGetFolderPathA(nullptr, CSIDL_CDBURN_AREA, nullptr, 0, path), S_FALSE);
    EXPECT_STREQ(path, "");
    EXPECT_EQ(SHGetFolderPathA(nullptr, CSIDL_CDBURN_AREA | CSIDL_FLAG_CREATE, nullptr, 0, path),
              S_OK);
    EXPECT_EQ(SHGetFolderPathA(nullptr, CSIDL_CDBURN_AREA, nullptr, 0, path), S_OK);
}

TEST(FolderPathCalls, AskForTheDefaultPlaceSecond) {
    struct {
        std::uintptr_t first, second;  // what the platform answers; 99: it runs
        int result;
        unsigned asked;
    } const rows[] = {
        {1, 99, 1, 2}, {0x80070002, 99, 1, 2}, {1, 1, 0, 2}, {1, 0x80004005, 0, 2}, {2, 99, 0, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.first << ", " << row.second);
        machine::Script script;
        script.answer("SHGetFolderPathA", row.first, 1);
        if (row.second != 99) script.answer("SHGetFolderPathA", row.second, 2);
        char buffer[MAX_PATH] = "";
        EXPECT_EQ(Jw32GetFolderPath(CSIDL_FONTS, buffer, MAX_PATH), row.result);
        EXPECT_EQ(script.count("SHGetFolderPathA"), row.asked);
        EXPECT_EQ(script.count("FreeLibrary"), 1u);
        if (row.asked == 2) {
            EXPECT_EQ(script.calls()[3].text(), "SHGetFolderPathA(null, 32788, null, 1, pointer)");
        }
    }
}

class TemporaryCalls : public ScratchDrives {
  protected:
    TemporaryVariables kept_;
};

TEST_F(TemporaryCalls, AskForTheLongFormOnce) {
    kept_.set("C:\\", "");
    machine::Script script;
    char buffer[40] = "";
    EXPECT_EQ(Jw32TempDirectory(buffer, sizeof buffer), 3u);
    EXPECT_THAT(texts(script, 9),
                ElementsAre("_dupenv_s(\"TMP\")", "LoadLibraryA(\"Kernel32.dll\")",
                            "GetProcAddress(pointer, \"GetLongPathNameA\")",
                            "GetLongPathNameA(\"C:\\\", 520)", "FreeLibrary(pointer)"));
}

TEST_F(TemporaryCalls, TakeTheValueWhereThereIsNoUsableLongForm) {
    kept_.set("C:\\", "");
    const auto gives = [](auto arrange, DWORD length, const char* text) {
        machine::Script script;
        arrange(script);
        char buffer[40] = "former";
        EXPECT_EQ(Jw32TempDirectory(buffer, sizeof buffer), length);
        EXPECT_STREQ(buffer, text);
    };
    gives([](auto& script) { script.missing("kernel32.dll", "GetLongPathNameA"); }, 3, "C:\\");
    gives([](auto& script) { script.fail("GetLongPathNameA", ERROR_ACCESS_DENIED); }, 3, "C:\\");
    gives([](auto& script) { script.answer("GetLongPathNameA", 521); }, 3, "C:\\");
    gives([](auto& script) { script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND); }, 0, "");
}

TEST_F(TemporaryCalls, CompleteTheEnvironmentInOrder) {
    kept_.set("", "C:\\Windows");
    {
        machine::Script script;
        char buffer[40] = "";
        EXPECT_EQ(Jw32TempDirectory(buffer, sizeof buffer), 10u);
        EXPECT_THAT(texts(script, 3), ElementsAre("_dupenv_s(\"TMP\")", "_dupenv_s(\"TEMP\")",
                                                  "_putenv(\"TMP=C:\\Windows\")"));
    }
    kept_.set("", "");
    machine::Script script;
    script.fail("CreateDirectoryW", ERROR_ACCESS_DENIED, 0);
    char buffer[60] = "";
    EXPECT_EQ(Jw32TempDirectory(buffer, sizeof buffer), 25u);
    EXPECT_STREQ(buffer, "C:\\Windows\\System32\\~Temp") << "it is used even if it is not made";
    EXPECT_THAT(texts(script, 4),
                ElementsAre("_dupenv_s(\"TMP\")", "_dupenv_s(\"TEMP\")", "GetSystemDirectoryA(260)",
                            "PathAddBackslashA(\"C:\\Windows\\System32\")"));
    const auto calls = script.calls();
    EXPECT_EQ(calls[calls.size() - 2].text(), "_putenv(\"TMP=C:\\Windows\\System32\\~Temp\")");
    EXPECT_EQ(calls.back().text(), "_putenv(\"TEMP=C:\\Windows\\System32\\~Temp\")");
}

TEST_F(TemporaryCalls, GiveNothingWithoutASystemDirectory) {
    for (const std::uintptr_t length : {0u, 3u, 300u}) {
        kept_.set("", "");
        machine::Script script;
        script.answer("GetSystemDirectoryA", length);
        std::string buffer(8, 'x');
        EXPECT_EQ(Jw32TempDirectory(buffer.data(), 8), 0u);
        EXPECT_THAT(buffer, Each('\0'));
        EXPECT_EQ(script.count("_putenv"), 0u);
    }
    auto machine = machine::current();
    machine.windowsDirectory = "C:\\" + std::string(243, 'w');
    const machine::Installed installed(machine);
    char buffer[300] = "";
    EXPECT_EQ(Jw32TempDirectory(buffer, sizeof buffer), 0u) << "255 bytes are too many";
}

TEST_F(TemporaryCalls, ThatFindNoNameClearTheBuffer) {
    machine::Script script;
    script.fail("_tempnam", ERROR_NOT_ENOUGH_MEMORY, 0);
    std::string buffer(8, 'x');
    EXPECT_EQ(Jw32TempFilename(buffer.data(), 8, "C:\\a", "p"), 0u);
    EXPECT_THAT(buffer, Each('\0'));
    EXPECT_THAT(texts(script, 9), ElementsAre("_tempnam(\"C:\\a\", \"p\")"));
    EXPECT_EQ(Jw32TempFilename(buffer.data(), 8, std::string(300, 'd').c_str(), nullptr), 0u);
    EXPECT_EQ(script.calls().back().text(), "_tempnam(\"" + std::string(260, 'd') + "\", null)");
    Triple triple;
    EXPECT_EQ(Jw32CreateTempFile("C:\\a", "p", GENERIC_WRITE, CREATE_NEW, 0, 0, &triple.code,
                                 triple.text, triple.size),
              INVALID_HANDLE_VALUE);
    EXPECT_TRUE(triple.tells(ERROR_PATH_NOT_FOUND)) << triple;
}

TEST_F(TemporaryCalls, OfANameThatIsTooLongLeaveTheTripleAlone) {
    kept_.set("", "");
    std::string deep = c();
    while (deep.size() + 50 < 250) deep += "\\" + std::string(49, 'd');
    deep += "\\" + std::string(250 - deep.size() - 1, 'e');
    ASSERT_TRUE(Jw32DirectoryCreate(deep.c_str()));
    machine::Script script;
    Triple triple;
    EXPECT_EQ(Jw32CreateTempFile(deep.c_str(), "p", GENERIC_WRITE, CREATE_NEW, 0, 0, &triple.code,
                                 triple.text, triple.size),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(triple.code, Triple().code);
    EXPECT_STREQ(triple.text, Triple().text);
    EXPECT_THAT(script.names(), ElementsAre("_tempnam"));
}

// Eight threads, each with as many names.
std::vector<std::string> namesOfEightThreads(const std::string& folder) {
    constexpr std::size_t threads = 8, each = 250;
    std::vector<std::string> names(threads * each);
    std::vector<std::thread> running;
    for (std::size_t thread = 0; thread < threads; ++thread) {
        running.emplace_back([&, thread] {
            for (std::size_t i = 0; i < each; ++i) {
                char name[MAX_PATH] = "";
                Jw32TempFilename(name, sizeof name, folder.c_str(), "jwt");
                names[thread * each + i] = name;
            }
        });
    }
    for (auto& thread : running) thread.join();
    return names;
}

TEST_F(TemporaryCalls, OfTwoProcessesWithEightThreadsEachNeverMeet) {
    kept_.set("", "");
    const auto list =
        std::filesystem::temp_directory_path() / ("names-" + std::to_string(getpid()));
    const pid_t child = ::fork();
    if (child == 0) {
        std::ofstream out(list);
        for (const auto& name : namesOfEightThreads(d())) out << name << '\n';
        out.close();
        std::_Exit(EXIT_SUCCESS);
    }
    auto names = namesOfEightThreads(d());
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    std::ifstream in(list);
    for (std::string name; std::getline(in, name);) names.push_back(name);
    std::filesystem::remove(list);
    EXPECT_EQ(names.size(), 4000u);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
}

}  // namespace
