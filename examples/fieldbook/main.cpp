// fieldbook BOOK...: reduces closed traverses and archives the reports.
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
    "Reduces the closed traverse in the text file BOOK, writes BOOK's name with .report.txt "
    "beside\n"
    "it and moves that report into the directory 'archive' there. A book looks like this:\n"
    "\n"
    "    title   Mill meadow       # what stands behind a # is a remark\n"
    "    unit    deg               # angles in packed degrees DDD.MMSSss; or gon\n"
    "    turns   left              # which way round; or right\n"
    "    start   1000.000 5000.000 # northing and easting of the first station\n"
    "    bearing 90.0000           # of the first leg\n"
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

void reduceBook(const std::string& path) {
    const auto parts = splitPath(path);
    const auto book = parseBook(readFile(path));
    std::printf("Read     %s: %zu stations, angles in %s\n\n", shown(path).c_str(),
                book.stations.size(), unitName(book.unit).c_str());

    const auto lines = reportLines(parts.name, book, reduce(book));
    std::printf("%s\n", joined(lines, "\n").c_str());

    // The bytes of the line ends are chosen here, the same on every system.
    const auto report = joined(lines, "\r\n");
    const auto reportPath = parts.folder + parts.baseName + ".report.txt";
    writeFile(reportPath, report);
    std::printf("Written  %s, %zu bytes\n", shown(reportPath).c_str(), report.size());
    std::printf("CRC-32   %08X\n", static_cast<unsigned>(crcOf(report)));
    std::printf("Moved    to %s\n", shown(archive(reportPath, ".txt")).c_str());
}

// Tells what is wrong with a book and goes on: the next one may be fine.
bool reduceOrTell(const std::string& path) {
    try {
        reduceBook(path);
        return true;
    } catch (const BookError& error) {
        std::fprintf(stderr, "fieldbook: %s, %s\n", shown(path).c_str(), error.what());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fieldbook: %s\n", error.what());
    }
    return false;
}

}  // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> books(arguments + 1, arguments + count);
    if (books.empty()) return std::fputs(usage, stderr), 2;
    if (books[0] == "--help" || books[0] == "-h") return std::fputs(usage, stdout) < 0 ? 1 : 0;
    bool allDone = true;
    for (const auto& book : books) {
        if (&book != &books.front()) std::printf("\n");
        allDone = reduceOrTell(withBackslashes(book)) && allDone;
    }
    return allDone ? 0 : 1;
}
