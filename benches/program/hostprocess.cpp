#include "benches/program/hostprocess.h"

#include <windows.h>

#include <fstream>
#include <sstream>
#include <vector>

namespace bench {
namespace {

const std::string processes = "Z:\\proc\\";

/// The full paths of subfolders with numeric names.
std::vector<std::string> numberedFolders(const std::string& folder) {
    std::vector<std::string> found;
    WIN32_FIND_DATAA entry{};
    const HANDLE search = FindFirstFileA((folder + "*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return found;
    do
        if (entry.cFileName[0] >= '0' && entry.cFileName[0] <= '9')
            found.push_back(folder + entry.cFileName + '\\');
    while (FindNextFileA(search, &entry));
    FindClose(search);
    return found;
}

std::string textOfFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace

HostProcess::HostProcess(const std::string& programName) {
    for (const std::string& folder : numberedFolders(processes)) {
        const std::string commandLine = textOfFile(folder + "cmdline");
        // Only the first word counts, because a parent process may name the program in its arguments.
        if (commandLine.substr(0, commandLine.find('\0')).find(programName) != std::string::npos)
            folder_ = folder;
    }
}

double HostProcess::processorTime() const {
    double nanoseconds = 0;
    for (const std::string& thread : numberedFolders(folder_ + "task\\")) {
        double used = 0;
        std::istringstream(textOfFile(thread + "schedstat")) >> used;
        nanoseconds += used;
    }
    return nanoseconds * 1e-9;
}

double HostProcess::privateMegabytes() const {
    const std::string status = textOfFile(folder_ + "status");
    const std::string name = "RssAnon:";
    const std::size_t place = status.find(name);
    double kilobytes = 0;
    if (place != std::string::npos)
        std::istringstream(status.substr(place + name.size())) >> kilobytes;
    return kilobytes / 1024;
}

} // namespace bench
