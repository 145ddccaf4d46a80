// What the tests of processes have in common: a program that reports how it was started.
#pragma once

#include "lib/base/files.h"
#include "tests/support/patience.h"
#include "tests/support/startedprocess.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <string>

namespace test {

inline std::string numberOf(HANDLE handle) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(handle));
}

/// What the started process says of its own start.
struct Report {
    DWORD processId = 0;
    DWORD flags = 0;
    DWORD showCommand = 0;
    std::string directory;
    std::string commandLine;
};

/// Waits for the report of a process that may not even run yet.
inline Report readReport(const std::string& path) {
    for (DWORD waited = 0; waited < patience && !base::fileExists(path); waited += 20)
        Sleep(20);
    Report report;
    std::ifstream file(path);
    file >> report.processId >> report.flags >> report.showCommand >> std::ws;
    std::getline(file, report.directory);
    std::getline(file, report.commandLine);
    return report;
}

inline std::string withBackslash(std::string directory) {
    if (!directory.ends_with('\\'))
        directory += '\\';
    return directory;
}

class ProcessTest : public testing::Test {
protected:
    TemporaryFolder folder_;
    const std::string report_ = folder_.file("report");
    const std::string reporting_ = child("report \"" + report_ + "\"");
};

} // namespace test
