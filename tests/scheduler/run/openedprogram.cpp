// Stands for a spider that is opened by hand: writes beside the project how it was started.
#include <windows.h>

#include <cstdio>
#include <string>

int main(int count, char** arguments) {
    if (count != 2)
        return 1;
    STARTUPINFOA info{};
    GetStartupInfoA(&info);
    char directory[MAX_PATH + 1] = {};
    GetCurrentDirectoryA(sizeof directory, directory);
    const std::string path = std::string(arguments[1]) + ".opened";
    const std::string unfinished = path + ".part";
    std::FILE* const file = std::fopen(unfinished.c_str(), "wb");
    if (!file)
        return 1;
    std::fprintf(file, "%u|%s|%s", static_cast<unsigned>(info.wShowWindow), directory, GetCommandLineA());
    std::fclose(file);
    return MoveFileA(unfinished.c_str(), path.c_str()) ? 0 : 1;
}
