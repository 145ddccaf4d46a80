// A process for the tests to start. Its first argument says what it does, see main.
#include "lib/base/handles.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

HANDLE handleFrom(const char* number) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(std::strtoul(number, nullptr, 10)));
}

/// Writes what the process was started with, one field a line. The file appears whole.
int report(const std::string& path) {
    STARTUPINFOA info{};
    GetStartupInfoA(&info);
    char directory[MAX_PATH] = {};
    GetCurrentDirectoryA(sizeof directory, directory);
    const std::string unfinished = path + ".part";
    std::FILE* const file = std::fopen(unfinished.c_str(), "wb");
    if (!file)
        return 1;
    std::fprintf(file, "%lu\n%lu\n%u\n%s\n%s\n", GetCurrentProcessId(), info.dwFlags,
                 static_cast<unsigned>(info.wShowWindow), directory, GetCommandLineA());
    std::fclose(file);
    return MoveFileA(unfinished.c_str(), path.c_str()) ? 0 : 1;
}

int writeTo(DWORD standardHandle, std::string_view text) {
    DWORD written = 0;
    return WriteFile(GetStdHandle(standardHandle), text.data(), static_cast<DWORD>(text.size()), &written,
                     nullptr) &&
                   written == text.size()
               ? 0
               : 1;
}

int copyInput() {
    char buffer[100];
    DWORD length = 0;
    if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer, sizeof buffer, &length, nullptr))
        return 1;
    return writeTo(STD_OUTPUT_HANDLE, std::string_view(buffer, length));
}

} // namespace

int main(int count, char** arguments) {
    const std::string_view command = count > 1 ? arguments[1] : "";
    const char* const argument = count > 2 ? arguments[2] : "";
    if (command == "exit") // CODE
        ExitProcess(std::strtoul(argument, nullptr, 10));
    if (command == "report-and-sleep") // FILE
        return report(argument) + static_cast<int>(SleepEx(INFINITE, FALSE));
    if (command == "report") // FILE
        return report(argument);
    if (command == "copy-input")
        return copyInput();
    if (command == "write-error")
        return writeTo(STD_ERROR_HANDLE, "error");
    if (command == "set") // HANDLE of an event
        return SetEvent(handleFrom(argument)) ? 0 : 1;
    if (command == "set-both") { // HANDLE of an event, NAME of another
        SetEvent(handleFrom(argument));
        const base::KernelHandle named(OpenEventA(EVENT_MODIFY_STATE, FALSE, count > 3 ? arguments[3] : ""));
        return SetEvent(named.get()) ? 0 : 1;
    }
    if (command == "answer") { // NAME of an event to wait for, NAME of the one to set then
        const base::KernelHandle question(OpenEventA(SYNCHRONIZE, FALSE, argument));
        const base::KernelHandle answer(OpenEventA(EVENT_MODIFY_STATE, FALSE, count > 3 ? arguments[3] : ""));
        return WaitForSingleObject(question.get(), test::patience) == WAIT_OBJECT_0 && SetEvent(answer.get())
                   ? 5
                   : 1;
    }
    if (command == "has-mutex") { // NAME
        const base::KernelHandle mutex(OpenMutexA(SYNCHRONIZE, FALSE, argument));
        return mutex ? 1 : 0;
    }
    return 99;
}
