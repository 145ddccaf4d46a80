// The sample spider as tests use it: its program, its project files and its log.
#pragma once

#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "tests/support/filecontent.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <string>

namespace test {

/// The spider that was built beside the running test.
inline std::string spiderPath() {
    const std::string folder = base::directoryOf(base::executablePath());
    return folder.substr(0, folder.rfind("\\tests\\")) + "\\tests\\spider\\spider.exe";
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
        writeFile(folder_.file(name), content);
        return folder_.file(name);
    }

    std::string log() const { return fileContent(folder_.file("spider.log")); }

private:
    TemporaryFolder folder_;
};

} // namespace test
