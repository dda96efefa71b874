// fieldbook BOOK...: reduces closed traverses and archives the reports.
#include <atlexcept.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "book.h"
#include "files.h"
#include "report.h"
#include "traverse.h"

namespace {

using namespace fieldbook;

constexpr const char* usage =
    "usage: fieldbook BOOK...\n"
    "       fieldbook --help\n"
    "Reduces the closed traverse in the text file BOOK, prints the report and keeps it as\n"
    "BOOK.report.txt in the directory 'archive' beside the book, which is made if need be. With -\n"
    "for BOOK it reads the standard input; of what comes through a pipe no report is kept.\n"
    "A book looks like this:\n"
    "\n"
    "    title   Mill meadow       # what stands behind a # is a remark\n"
    "    unit    deg               # angles in packed degrees DDD.MMSSss; or gon\n"
    "    turns   left              # which way round; or right\n"
    "    start   1000.000 5000.000 # northing and easting of the first station\n"
    "    bearing 90.0000           # of the first leg\n"
    "    tolerance 0.0030 1:5000   # 30 seconds by the root of the stations; may be left out\n"
    "    station A 60.0000 100.00  # name, interior angle, distance to the next\n"
    "    station B 60.0000 100.00\n"
    "    station C 60.0000 100.00\n";

std::string joined(const Lines& lines, const std::string& lineEnd) {
    std::string text;
    for (const auto& line : lines) text += line + lineEnd;
    return text;
}

DWORD crcOf(std::string text) {
    return Jw32CrcMemory(reinterpret_cast<unsigned char*>(text.data()),
                         static_cast<int>(text.size()), 0);
}

// The name of a book for people.
std::string titleOf(const std::string& path) {
    return path == standardInput ? "the standard input" : shown(path);
}

void reduceBook(const std::string& path) {
    const auto parts = splitPath(path);
    const auto text = readText(path);
    const auto book = parseBook(text.bytes);
    std::printf("Read     %s: %zu stations, angles in %s\n\n", titleOf(path).c_str(),
                book.stations.size(), unitName(book.unit).c_str());

    const auto lines = reportLines(text.isFile ? parts.name : "from a pipe", book, reduce(book));
    std::printf("%s\n", joined(lines, "\n").c_str());

    // The bytes of the line ends are chosen here, the same on every system.
    const auto report = joined(lines, "\r\n");
    const auto kept = text.isFile
                          ? shown(archive(parts.folder, parts.baseName + ".report", ".txt", report))
                          : "nowhere: a pipe has no folder for it";
    std::printf("Written  %s\n", kept.c_str());
    std::printf("Size     %zu bytes\n", report.size());
    std::printf("CRC-32   %08X\n", static_cast<unsigned>(crcOf(report)));
}

void complain(const std::string& message) {
    std::fflush(stdout);  // what was printed before comes first, also in one file with this
    std::fprintf(stderr, "fieldbook: %s\n", message.c_str());
}

// Reports what is wrong with a book and goes on: the next one may be fine.
bool reduceOrComplain(const std::string& path) {
    try {
        reduceBook(path);
        return true;
    } catch (const BookError& error) {
        complain(titleOf(path) + ", " + error.what());
    } catch (const std::exception& error) {
        complain(error.what());
    } catch (const CAtlException&) {
        complain("'" + shown(path) + "' is not a name in this system's code page");
    }
    return false;
}

bool isOption(const std::string& word) {
    return word.starts_with('-') && word != standardInput;
}

int run(const std::vector<std::string>& words) {
    const auto option = std::find_if(words.begin(), words.end(), isOption);
    const bool hasOption = option != words.end();
    if (hasOption && (*option == "--help" || *option == "-h")) {
        std::fputs(usage, stdout);
        return 0;
    }
    if (hasOption) complain("there is no option '" + *option + "'");
    if (hasOption || words.empty()) return std::fputs(usage, stderr), 2;

    bool allDone = true;
    for (const auto& word : words) {
        if (&word != &words.front()) std::printf("\n");
        allDone = reduceOrComplain(withBackslashes(word)) && allDone;
    }
    return allDone ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
    const int result = run({arguments + 1, arguments + count});
    // What could not be printed, as on a full disk, shows here at the latest.
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return result;
    complain("cannot write the standard output");
    return 1;
}
