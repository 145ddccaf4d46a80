#include "benches/program/marks.h"

#include <windows.h>

#include <fstream>

namespace bench {
namespace {

std::string marksFile(const std::string& project) {
    return project + ".marks";
}

} // namespace

Moment momentNow() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return static_cast<Moment>(ULARGE_INTEGER{{now.dwLowDateTime, now.dwHighDateTime}}.QuadPart);
}

double secondsBetween(Moment from, Moment to) {
    return static_cast<double>(to - from) * 1e-7;
}

void writeMarks(const std::string& project, const Marks& marks) {
    std::ofstream(marksFile(project)) << marks.started << ' ' << marks.ended << '\n';
}

std::optional<Marks> readMarks(const std::string& project) {
    Marks marks;
    if (std::ifstream(marksFile(project)) >> marks.started >> marks.ended)
        return marks;
    return std::nullopt;
}

} // namespace bench
