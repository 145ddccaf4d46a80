#include "lib/base/files.h"

#include "lib/base/sourceregistration.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <utility>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

std::FILE* openForWriting(const std::string& path) {
    constexpr int mode = _O_WRONLY | _O_BINARY | _O_CREAT | _O_TRUNC | _O_NOINHERIT;
    const int descriptor = _open(path.c_str(), mode, _S_IREAD | _S_IWRITE);
    if (descriptor < 0)
        return nullptr;
    std::FILE* const file = _fdopen(descriptor, "wb");
    if (!file)
        _close(descriptor);
    return file;
}

} // namespace

bool MappedFile::open(const std::string& path) {
    close();
    file_.reset(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (file_)
        mapping_.reset(CreateFileMappingA(file_.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (mapping_)
        view_ = static_cast<const std::byte*>(MapViewOfFile(mapping_.get(), FILE_MAP_READ, 0, 0, 0));
    if (view_)
        size_ = GetFileSize(file_.get(), nullptr);
    if (!view_ || size_ == INVALID_FILE_SIZE) {
        close();
        return false;
    }
    return true;
}

void MappedFile::close() {
    if (view_)
        UnmapViewOfFile(view_);
    view_ = nullptr;
    size_ = 0;
    mapping_.reset();
    file_.reset();
}

WrittenFile::WrittenFile(const std::string& path) : stream_(openForWriting(path)) {}

bool WrittenFile::write(std::span<const std::byte> bytes) {
    // What is empty may lie at a null address, which the runtime library must not be given.
    return stream_ && (bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), stream_) == bytes.size());
}

bool WrittenFile::close() {
    std::FILE* const stream = std::exchange(stream_, nullptr);
    if (!stream)
        return false;
    // Not every platform's close tells when what is written last, by the close itself, finds no room.
    const bool flushed = std::fflush(stream) == 0;
    return std::fclose(stream) == 0 && flushed;
}

bool anyFileMatches(const std::string& pattern) {
    WIN32_FIND_DATAA found{};
    return static_cast<bool>(FileSearch(FindFirstFileA(pattern.c_str(), &found)));
}

bool fileExists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string windowsDirectory() {
    std::string directory(256, '\0');
    const auto ask = [&directory] {
        return GetWindowsDirectoryA(directory.data(), static_cast<UINT>(directory.size()));
    };
    UINT length = ask();
    if (length >= directory.size()) {
        directory.resize(length + 1);
        length = ask();
    }
    // Longer again than it has just said: the platform does not tell.
    directory.resize(length < directory.size() ? length : 0);
    if (!directory.empty() && !directory.ends_with('\\'))
        directory += '\\';
    return directory;
}

} // namespace base
