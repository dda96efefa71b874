// Operations on files and directories, in both builds, most of them by the lines of operations.txt.
#include <jw32/directories.h>
#include <jw32/files.h>

#include <cstddef>
#include <cstring>
#include <optional>

#include "contract/file_lines.h"

namespace {

using namespace file_lines;

class FileOperations : public FileLines {
  protected:
    // A name of a line as an operation takes it; none is a null pointer.
    struct Name {
        std::optional<std::string> text;
        operator const char*() const { return text ? text->c_str() : nullptr; }
    };
    Name name(const std::string& word) const { return word == "null" ? Name{} : Name{path(word)}; }
    std::string readOpen(const Words& w) {
        char text[16] = "";
        const auto result = given(Jw32FileRead, handle(w.at(0)), text, number(w.at(1)));
        return result + (text[0] != '\0' ? " " : "") + text;
    }
    std::string openNew(const Words& w) {
        return given([&](auto... t) {
            void* const file =
                Jw32FileOpen(name(w.at(0)), sumOf(accesses, w.at(1)), sumOf(dispositions, w.at(2)),
                             sumOf(flags, w.at(3)), 0, t...);
            return file != INVALID_HANDLE_VALUE && CloseHandle(file);
        });
    }
    std::string findDirectory(const Words& w) {
        WIN32_FIND_DATAA record{};
        const auto result = given([&](auto... t) {
            void* const search = Jw32DirectoryFind(name(w.at(0)), &record, t...);
            return search != INVALID_HANDLE_VALUE && FindClose(search);
        });
        return result + (record.cFileName[0] != '\0' ? " " : "") + record.cFileName;
    }
};

TEST_F(FileOperations, GiveWhatTheLinesTell) {
    const auto sizeOf = [](auto which) {
        return given([&](auto... t) { return Jw32FileSize(which, t...); });
    };
    const DWORD hidden = FILE_ATTRIBUTE_HIDDEN;
    const Operations own = {
        {"Jw32FileRead", [&](auto& w) { return readOpen(w); }},
        {"Jw32FileWrite",
         [&](auto& w) {
             const auto size = static_cast<DWORD>(w.at(1).size());
             return given(Jw32FileWrite, handle(w.at(0)), w.at(1).data(), size);
         }},
        {"Jw32FileSeek",
         [&](auto& w) {
             return given(Jw32FileSeek, handle(w.at(0)), static_cast<LONG>(number(w.at(1))));
         }},
        {"Jw32FileSeekEnd", [&](auto& w) { return given(Jw32FileSeekEnd, handle(w.at(0))); }},
        {"Jw32FileSizeOfOpen", [&](auto& w) { return sizeOf(handle(w.at(0))); }},
        {"Jw32FileSize", [&](auto& w) { return sizeOf(path(w.at(0)).c_str()); }},
        {"Jw32FileOpen", [&](auto& w) { return openNew(w); }},
        {"Jw32FileFind", [&](auto& w) { return given(Jw32FileFind, name(w.at(0))); }},
        {"Jw32FileHide", [&](auto& w) { return given(Jw32FileHide, name(w.at(0))); }},
        {"Jw32FileMove",
         [&](auto& w) { return given(Jw32FileMove, name(w.at(0)), name(w.at(1))); }},
        {"Jw32DirectoryFind", [&](auto& w) { return findDirectory(w); }},
        {"Jw32DirectoryExist", [&](auto& w) { return given(Jw32DirectoryExist, name(w.at(0))); }},
        {"Jw32DirectoryCreate", [&](auto& w) { return given(Jw32DirectoryCreate, name(w.at(0))); }},
        {"Jw32DirectoryCreateHidden",
         [&](auto& w) { return given(Jw32DirectoryCreateAttr, name(w.at(0)), hidden, hidden); }},
        {"has", [&](auto& w) {
             return (attributes(path(w.at(0))) & sumOf(flags, w.at(1))) != 0 ? "yes" : "no";
         }}};
    holdVectors(own, onWine(), true, operations());
}

TEST_F(FileOperations, FillTheRecordOfADirectoryWithoutItsReservedFields) {
    const auto full = c("A long directory name");
    Jw32DirectoryCreate(full.c_str());
    WIN32_FIND_DATAW wide;
    ASSERT_TRUE(FindClose(FindFirstFileW(Wide(full), &wide)));
    WIN32_FIND_DATAA record;
    std::memset(&record, 0x55, sizeof record);
    ASSERT_TRUE(FindClose(Jw32DirectoryFind(c("A LONG directory name\\").c_str(), &record)));
    EXPECT_EQ(std::memcmp(&record, &wide, offsetof(WIN32_FIND_DATAA, dwReserved0)), 0);
    EXPECT_EQ(record.dwReserved0 & record.dwReserved1, 0x55555555u);
    EXPECT_STREQ(record.cFileName, "A long directory name");
    EXPECT_EQ(record.cAlternateFileName, narrow(wide.cAlternateFileName));
    EXPECT_EQ(reported(Jw32DirectoryFind, c(), nullptr), Report(INVALID_HANDLE_VALUE));
}

}  // namespace
