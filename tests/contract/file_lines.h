// A fixture for lists of lines about files: what carries out the operations that files.txt explains.
#pragma once

#include <algorithm>

#include "contract/contract_files.h"
#include "support/triple.h"
#include "support/vectors.h"

namespace file_lines {

inline std::string nameOf(DWORD code) {
    std::istringstream names(
        "0 OK 2 FILE_NOT_FOUND 3 PATH_NOT_FOUND 4 TOO_MANY_OPEN_FILES 5 ACCESS_DENIED "
        "6 INVALID_HANDLE 32 SHARING_VIOLATION 53 BAD_NETPATH 80 FILE_EXISTS 87 INVALID_PARAMETER "
        "112 DISK_FULL 123 INVALID_NAME 131 NEGATIVE_SEEK 145 DIR_NOT_EMPTY 183 ALREADY_EXISTS "
        "267 DIRECTORY 1455 COMMITMENT_LIMIT");
    DWORD number = 0;
    for (std::string name; names >> number >> name;) {
        if (number == code) return name;
    }
    return std::to_string(code);
}

inline std::string outcome(BOOL succeeded) {
    return nameOf(codeOf(succeeded));
}
// With a number behind it where there is one.
inline std::string outcome(BOOL succeeded, DWORD number) {
    return succeeded ? "OK " + std::to_string(number) : outcome(succeeded);
}

using Marks = std::vector<std::pair<std::string, DWORD>>;
inline const Marks accesses = {{"r", GENERIC_READ}, {"w", GENERIC_WRITE}, {"d", DELETE}};
inline const Marks sharing = {
    {"r", FILE_SHARE_READ}, {"w", FILE_SHARE_WRITE}, {"d", FILE_SHARE_DELETE}};
inline const Marks dispositions = {{"CREATE_NEW", CREATE_NEW},
                                   {"CREATE_ALWAYS", CREATE_ALWAYS},
                                   {"OPEN_EXISTING", OPEN_EXISTING},
                                   {"OPEN_ALWAYS", OPEN_ALWAYS},
                                   {"TRUNCATE_EXISTING", TRUNCATE_EXISTING},
                                   {"6", 6}};
inline const Marks flags = {
    {"readonly", FILE_ATTRIBUTE_READONLY},  {"hidden", FILE_ATTRIBUTE_HIDDEN},
    {"system", FILE_ATTRIBUTE_SYSTEM},      {"directory", FILE_ATTRIBUTE_DIRECTORY},
    {"archive", FILE_ATTRIBUTE_ARCHIVE},    {"normal", FILE_ATTRIBUTE_NORMAL},
    {"backup", FILE_FLAG_BACKUP_SEMANTICS}, {"once", FILE_FLAG_DELETE_ON_CLOSE},
    {"link", FILE_FLAG_OPEN_REPARSE_POINT}};

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != text.npos; at = text.find(from)) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// The sum of the marks that a text holds, and nothing else but blanks and dashes.
inline DWORD sumOf(const Marks& marks, std::string text) {
    DWORD sum = 0;
    for (const auto& [word, mark] : marks) {
        if (text.find(word) != text.npos) sum |= mark;
        text = replaced(text, word, "");
    }
    EXPECT_EQ(text.find_first_not_of(" -"), text.npos) << "no mark: " << text;
    return sum;
}

// The words from one of them on, with blanks between.
inline std::string rest(const Words& words, std::size_t from) {
    std::string result;
    for (auto i = from; i < words.size(); ++i) result += (i > from ? " " : "") + words[i];
    return result;
}

inline DWORD number(const std::string& word) {
    return static_cast<DWORD>(std::stoi(word));
}

class FileLines : public ContractFiles {
  protected:
    FileLines() { GetCurrentDirectoryA(MAX_PATH, former_); }
    ~FileLines() override { SetCurrentDirectoryA(former_); }

    std::string path(const std::string& name) const {
        auto full = c("A long folder name\\");
        full.resize(259, 'x');
        auto text = replaced(replaced(name, "$x255", std::string(255, 'x')), "$full", full);
        text = replaced(replaced(replaced(text, "$C", c()), "$D", d()), "$N", c().substr(3));
        text = replaced(text, "$c", 'c' + c().substr(1));
        if (text.starts_with('\'')) return text.substr(1);
        const bool isWhole =
            text.find(':') == 1 || text.starts_with('\\') || text.starts_with(".\\");
        return isWhole ? text : c(text);
    }

    std::string scene() {
        removeTree(c());
        removeTree(d());
        for (const auto& folder : {c(), d()}) CreateDirectoryW(Wide(folder), nullptr);
        arrange();
        return "OK";
    }
    std::string hold(const Words& w) {
        const auto share = sumOf(sharing, w.at(3)), disposition = sumOf(dispositions, w.at(4));
        SetLastError(4711);
        const HANDLE file = CreateFileW(Wide(path(w.at(1))), sumOf(accesses, w.at(2)), share,
                                        nullptr, disposition, sumOf(flags, rest(w, 5)), nullptr);
        const DWORD code = GetLastError();
        handles_[w.at(0)] = file;
        return (file != INVALID_HANDLE_VALUE && code != 0 ? "OK " : "") + nameOf(code);
    }
    std::string open(Words w) {
        w.insert(w.begin(), "");
        const auto result = hold(w);
        CloseHandle(handles_[""]);
        return result;
    }
    std::string marksOf(const std::string& name) const {
        const DWORD attributes = GetFileAttributesW(Wide(path(name)));
        if (attributes == INVALID_FILE_ATTRIBUTES) return outcome(FALSE);
        Words words;
        for (const auto& [word, mark] : flags) {
            if ((attributes & mark) != 0) words.push_back(word);
        }
        return rest(words, 0);
    }
    std::string find(const std::string& pattern) const {
        WIN32_FIND_DATAW first;
        WIN32_FIND_DATAA next;
        const HANDLE search = FindFirstFileW(Wide(path(pattern)), &first);
        if (search == INVALID_HANDLE_VALUE) return outcome(FALSE);
        Words names{narrow(first.cFileName)};
        EXPECT_EQ(codeOf(CloseHandle(search)), DWORD{ERROR_INVALID_HANDLE}) << "it goes on";
        while (FindNextFileA(search, &next)) names.push_back(next.cFileName);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
        EXPECT_TRUE(FindClose(search));
        std::sort(names.begin(), names.end());
        return rest(names, 0);
    }
    std::string full(const std::string& name) const {
        char text[MAX_PATH] = "", cut[4] = "";
        const DWORD length = GetFullPathNameA(name.c_str(), sizeof text, text, nullptr);
        EXPECT_EQ(GetFullPathNameA(name.c_str(), sizeof cut, cut, nullptr), length + 1);
        return replaced(text, c(), "$C");
    }
    std::string set(const Words& w) const {
        return outcome(SetFileAttributesW(wide(w.at(0)), sumOf(flags, rest(w, 1))));
    }
    std::string put(const std::string& name, const std::string& text) {
        DWORD count = 4711;
        const auto size = static_cast<DWORD>(text.size());
        const BOOL done = WriteFile(handle(name), text.data(), size, &count, nullptr);
        EXPECT_TRUE(done || count == 0) << "a failure writes nothing";
        return outcome(done, count);
    }
    std::string get(const std::string& name, const std::string& size) {
        char text[16];
        DWORD count = 0;
        const BOOL done = ReadFile(handle(name), text, number(size), &count, nullptr);
        return outcome(done, count);
    }
    std::string seek(const Words& w) {
        const auto distance = static_cast<LONG>(number(w.at(1)));
        const DWORD to = SetFilePointer(handle(w.at(0)), distance, nullptr, number(w.at(2)));
        return outcome(to != INVALID_SET_FILE_POINTER, to);
    }
    std::string size(const std::string& name) {
        const DWORD result = GetFileSize(handle(name), nullptr);
        return outcome(result != INVALID_FILE_SIZE, result);
    }
    std::string content(const std::string& name) const {
        return '"' + replaced(read(path(name)), std::string(1, '\0'), "\\0") + '"';
    }
    // What an operation of the library gives, and the name of the code that it reports.
    template <class Operation, class... Arguments>
    static std::string given(Operation operation, Arguments... arguments) {
        const auto report = reported(operation, arguments...);
        EXPECT_EQ(report.hasText, report.code != 0);
        return std::to_string(report.result) + (report.code != 0 ? ' ' + nameOf(report.code) : "");
    }
    HANDLE handle(const std::string& name) { return name == "null" ? nullptr : handles_.at(name); }
    Wide wide(const std::string& name) const { return Wide(path(name)); }

    Operations operations() {
        return {
            {"scene", [&](auto&) { return scene(); }},
            {"open", [&](auto& w) { return open(w); }},
            {"hold", [&](auto& w) { return hold(w); }},
            {"close", [&](auto& w) { return outcome(CloseHandle(handle(w.at(0)))); }},
            {"put", [&](auto& w) { return put(w.at(0), w.at(1)); }},
            {"get", [&](auto& w) { return get(w.at(0), w.at(1)); }},
            {"seek", [&](auto& w) { return seek(w); }},
            {"size", [&](auto& w) { return size(w.at(0)); }},
            {"cut", [&](auto& w) { return outcome(SetEndOfFile(handle(w.at(0)))); }},
            {"endsearch", [&](auto& w) { return outcome(FindClose(handle(w.at(0)))); }},
            {"write", [&](auto& w) { return write(path(w.at(0)), w.at(1)), "OK"; }},
            {"read", [&](auto& w) { return content(w.at(0)); }},
            {"move", [&](auto& w) { return outcome(MoveFileW(wide(w.at(0)), wide(w.at(1)))); }},
            {"copy", [&](auto& w) { return outcome(CopyFileW(wide(w.at(0)), wide(w.at(1)), 0)); }},
            {"copynew",
             [&](auto& w) { return outcome(CopyFileW(wide(w.at(0)), wide(w.at(1)), 1)); }},
            {"delete", [&](auto& w) { return outcome(DeleteFileW(wide(w.at(0)))); }},
            {"make", [&](auto& w) { return outcome(CreateDirectoryW(wide(w.at(0)), nullptr)); }},
            {"remove", [&](auto& w) { return outcome(RemoveDirectoryW(wide(w.at(0)))); }},
            {"enter",
             [&](auto& w) { return outcome(SetCurrentDirectoryA(path(w.at(0)).c_str())); }},
            {"full", [&](auto& w) { return full(w.at(0)); }},
            {"set", [&](auto& w) { return set(w); }},
            {"attributes", [&](auto& w) { return marksOf(w.at(0)); }},
            {"find", [&](auto& w) { return find(w.at(0)); }}};
    }

  private:
    std::map<std::string, HANDLE> handles_;
    char former_[MAX_PATH] = "";
};

}  // namespace file_lines

using file_lines::FileLines;
