// The sample spider (see README.md). Shares no code with the program, so that no shared bug stays hidden.
#include <windows.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <string>

namespace {

struct Project {
    DWORD milliseconds = 0;
    std::string event; ///< name of the event that ends the run; may be empty
    std::string result;
    DWORD error = 0;
    bool resultIsNumber = false;
    bool leavesOutcome = true;
    bool crashes = false;
};

Project readProject(const std::string& path) {
    Project project;
    std::ifstream file(path);
    if (!file) {
        project.result = "The project cannot be read.";
        project.error = 2;
    }
    for (std::string line; std::getline(file, line);) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos || line.starts_with('#'))
            continue;
        const std::string name = line.substr(0, equals);
        const std::string value = line.substr(equals + 1);
        if (name == "seconds")
            project.milliseconds = 1000 * std::strtoul(value.c_str(), nullptr, 10);
        else if (name == "until")
            project.event = value;
        else if (name == "result")
            project.result = value;
        else if (name == "error")
            project.error = std::strtoul(value.c_str(), nullptr, 10);
        else if (name == "result-as-number")
            project.resultIsNumber = value == "1";
        else if (name == "leave")
            project.leavesOutcome = value != "nothing";
        else if (name == "crash")
            project.crashes = value == "1";
    }
    return project;
}

std::string programPath() {
    char path[MAX_PATH]{};
    GetModuleFileNameA(nullptr, path, sizeof(path));
    return path;
}

std::string logPath() {
    const char* const named = std::getenv("SCHEDULER_SPIDER_LOG");
    const std::string program = programPath();
    return named ? named : program.substr(0, program.rfind('\\') + 1) + "spider.log";
}

/// Appends a line with the local time to the log. False if that fails.
bool log(const std::string& text) {
    // Under Wine, concurrent appends overwrite each other.
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, "Corvane sample spider's log");
    WaitForSingleObject(mutex, INFINITE);
    std::ofstream file(logPath(), std::ios::app);
    const std::time_t now = std::time(nullptr);
    file << std::put_time(std::localtime(&now), "%Y-%m-%d %H:%M:%S ") << text << '\n';
    file.close();
    ReleaseMutex(mutex);
    CloseHandle(mutex);
    return file.good();
}

bool setText(HKEY root, const std::string& key, const char* value, const std::string& text) {
    return RegSetKeyValueA(root, key.c_str(), value, REG_SZ, text.c_str(),
                           static_cast<DWORD>(text.size() + 1)) == ERROR_SUCCESS;
}

bool registerAll() {
    bool done = true;
    for (const std::string extension : {"kra", "krb", "krc"}) {
        const std::string type = "Corvane.Project." + extension;
        done &= setText(HKEY_CLASSES_ROOT, '.' + extension, "", type);
        done &= setText(HKEY_CLASSES_ROOT, type + "\\shell\\open\\command", "",
                        '"' + programPath() + "\" \"%1\"");
    }
    return done;
}

void leaveOutcome(const Project& project, const std::string& runNumber) {
    const std::string key = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule" + runNumber;
    const auto leaveError = [&](const char* value) {
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, key.c_str(), value, REG_DWORD, &project.error, sizeof(DWORD));
    };
    if (project.resultIsNumber)
        leaveError("Result");
    else
        setText(HKEY_LOCAL_MACHINE, key, "Result", project.result);
    leaveError("Error");
}

int run(const std::string& runNumber, const std::string& path) {
    log("start run " + runNumber + ": " + GetCommandLineA());
    const Project project = readProject(path);
    Sleep(project.milliseconds);
    if (!project.event.empty())
        WaitForSingleObject(CreateEventA(nullptr, TRUE, FALSE, project.event.c_str()), INFINITE);
    if (project.crashes)
        TerminateProcess(GetCurrentProcess(), STATUS_ACCESS_VIOLATION);
    log("end run " + runNumber + ": error " + std::to_string(project.error));
    if (project.leavesOutcome)
        leaveOutcome(project, runNumber);
    return static_cast<int>(project.error);
}

} // namespace

int main(int count, char** words) {
    std::string runNumber;
    std::string project;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "/register")
            return registerAll() ? 0 : 1;
        if (word.starts_with("/s"))
            runNumber = word.substr(2);
        else if (!word.starts_with('/'))
            project = word;
    }
    if (!runNumber.empty())
        return run(runNumber, project);
    return log(std::string("open run -: ") + GetCommandLineA()) ? 0 : 1;
}
