// The sample spider as tests use it: its program, its project files and its log.
#pragma once

#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "tests/support/filecontent.h"
#include "tests/support/patience.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <fstream>
#include <string>

namespace test {

/// The full path of a program that was built beside the running test; `place` is its path below the tests'
/// folder.
inline std::string builtProgram(const std::string& place) {
    std::string folder = base::directoryOf(base::executablePath());
    const std::string::size_type tests = folder.rfind("\\tests\\");
    return folder.substr(0, tests) + "\\tests\\" + place;
}

inline std::string spiderPath() {
    return builtProgram("spider\\spider.exe");
}

/// A folder with projects in it and the log of the spiders that this test starts.
class SpiderFolder {
public:
    SpiderFolder() { SetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", folder_.file("spider.log").c_str()); }
    ~SpiderFolder() { SetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", nullptr); }
    SpiderFolder(const SpiderFolder&) = delete;
    SpiderFolder& operator=(const SpiderFolder&) = delete;

    std::string path() const { return folder_.path(); }

    /// Writes a project file and returns its path.
    std::string project(const std::string& name, const std::string& content) const {
        std::ofstream(folder_.file(name), std::ios::binary) << content;
        return folder_.file(name);
    }

    std::string log() const { return fileContent(folder_.file("spider.log")); }

    /// Whether the text appears in the log before the patience of a test ends.
    bool logShows(const std::string& text) const {
        const ULONGLONG last = GetTickCount64() + patience;
        while (log().find(text) == std::string::npos) {
            if (GetTickCount64() > last)
                return false;
            Sleep(20);
        }
        return true;
    }

private:
    TemporaryFolder folder_;
};

/// Makes the sample spider the program of all project types. False when the registry refuses.
inline bool registerSpider() {
    return base::runProcessAndWait('"' + spiderPath() + "\" /register", SW_HIDE, {}, INFINITE) == 0;
}

} // namespace test
