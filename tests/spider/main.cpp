// The sample spider: what it does is told by README.md.
#include "lib/base/files.h"
#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "tests/spider/invocation.h"
#include "tests/spider/project.h"
#include "tests/spider/spiderlog.h"

#include <windows.h>

#include <optional>
#include <string>

namespace spider {
namespace {

constexpr std::uint32_t projectUnreadable = 2;

bool registerFor(const std::string& extension) {
    const std::string type = "Corvane.Project." + extension;
    const std::string command = '"' + base::executablePath() + "\" \"%1\"";
    return base::writeString(HKEY_CLASSES_ROOT, '.' + extension + '\\', type) &&
           base::writeString(HKEY_CLASSES_ROOT, type + "\\shell\\open\\command\\", command);
}

int registerAll() {
    bool done = true;
    for (const char* extension : {"kra", "krb", "krc"})
        done = registerFor(extension) && done;
    return done ? 0 : 1;
}

Project readProject(const std::string& path) {
    base::MappedFile file;
    if (file.open(path)) {
        const auto bytes = file.bytes();
        return parseProject({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
    Project project;
    // An empty file, which says that all goes well, cannot be mapped.
    if (!base::fileExists(path)) {
        project.result = "The project cannot be read.";
        project.error = projectUnreadable;
    }
    return project;
}

void leaveOutcome(const Project& project, std::uint32_t runNumber) {
    const std::string key =
        "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule" + std::to_string(runNumber) + '\\';
    // A value that cannot be written is missing, as with any spider.
    if (project.resultAsNumber)
        static_cast<void>(base::writeNumber(HKEY_LOCAL_MACHINE, key + "Result", project.error));
    else
        static_cast<void>(base::writeString(HKEY_LOCAL_MACHINE, key + "Result", project.result));
    static_cast<void>(base::writeNumber(HKEY_LOCAL_MACHINE, key + "Error", project.error));
}

int run(const Invocation& invocation, const std::string& commandLine) {
    const std::string log = logPath();
    const std::uint32_t runNumber = *invocation.runNumber;
    appendToLog(log, "start", runNumber, commandLine);

    const Project project = readProject(invocation.projectPath);
    Sleep(static_cast<DWORD>(runTime(project, invocation.timeLimitMinutes).count()));
    if (project.crash)
        TerminateProcess(GetCurrentProcess(), STATUS_ACCESS_VIOLATION);

    appendToLog(log, "end", runNumber, "error " + std::to_string(project.error));
    if (!project.leaveNothing)
        leaveOutcome(project, runNumber);
    return static_cast<int>(project.error);
}

} // namespace
} // namespace spider

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const std::string commandLine = GetCommandLineA();
    const spider::Invocation invocation = spider::parseInvocation(commandLine);
    if (invocation.registerTypes)
        return spider::registerAll();
    if (invocation.runNumber)
        return spider::run(invocation, commandLine);
    return spider::appendToLog(spider::logPath(), "open", std::nullopt, commandLine) ? 0 : 1;
}
