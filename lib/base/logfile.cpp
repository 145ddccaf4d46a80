#include "lib/base/logfile.h"

#include "lib/base/handles.h"
#include "lib/base/paths.h"
#include "lib/base/sourceregistration.h"
#include "lib/base/strings.h"

#include <windows.h>

#include <shlobj.h>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

constexpr std::string_view lineBreak = "\r\n";

FileHandle openToAppend(const std::string& path) {
    // Allows all sharing, so that other programs can read and edit the file.
    constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return FileHandle(CreateFileA(path.c_str(), GENERIC_READ | FILE_APPEND_DATA, sharing, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

FileHandle openLog(const std::string& path) {
    FileHandle file = openToAppend(path);
    if (!file && GetLastError() == ERROR_PATH_NOT_FOUND) {
        std::string folder = directoryOf(path);
        trimRight(folder, "\\");
        if (SHCreateDirectoryExA(nullptr, folder.c_str(), nullptr) == ERROR_SUCCESS)
            file = openToAppend(path);
    }
    return file;
}

bool endsWithLineBreak(HANDLE file) {
    char last = '\0';
    DWORD read = 0;
    SetFilePointer(file, -1, nullptr, FILE_END);
    return ReadFile(file, &last, 1, &read, nullptr) && last == lineBreak.back();
}

/// The text to append to a file of `size` bytes.
std::string textFor(HANDLE file, DWORD size, const std::string& header, std::string_view line) {
    std::string text;
    if (size == 0)
        text = header;
    if (size == 0 || !endsWithLineBreak(file))
        text += lineBreak;
    text += line;
    text += lineBreak;
    return text;
}

} // namespace

bool appendLine(const LogFile& log, std::string_view line) {
    FileHandle file = openLog(log.path);
    if (!file)
        return false;
    const DWORD size = GetFileSize(file.get(), nullptr);
    std::string text = textFor(file.get(), size, log.header, line);
    if (size != 0 && std::uint64_t{size} + text.size() > log.sizeLimit) {
        file.reset();
        if (MoveFileExA(log.path.c_str(), log.olderPath.c_str(), MOVEFILE_REPLACE_EXISTING))
            text = textFor(nullptr, 0, log.header, line);
        file = openLog(log.path);
    }
    DWORD written = 0;
    return WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
           written == text.size();
}

} // namespace base
