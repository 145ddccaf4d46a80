#include "lib/base/files.h"

#include "lib/base/sourceregistration.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <shlobj.h>
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

/// The error code of a failed runtime call. The runtime sets none if only part of the data fits on the disk.
std::uint32_t runtimeError() {
    return _doserrno != 0 ? _doserrno : ERROR_DISK_FULL;
}

bool moveTo(const FileHandle& file, DWORD offset) {
    return SetFilePointer(file.get(), static_cast<LONG>(offset), nullptr, FILE_BEGIN) !=
           INVALID_SET_FILE_POINTER;
}

bool writeAt(const FileHandle& file, DWORD offset, std::span<const std::byte> bytes) {
    const auto size = static_cast<DWORD>(bytes.size());
    DWORD written = 0;
    return moveTo(file, offset) && WriteFile(file.get(), bytes.data(), size, &written, nullptr) &&
           written == size;
}

bool cutAt(const FileHandle& file, DWORD size) {
    return moveTo(file, size) && SetEndOfFile(file.get());
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

template<class Step>
bool OutputFile::attempt(const Step& step) {
    _doserrno = 0;
    const bool done = step();
    if (!done && error_ == 0)
        error_ = runtimeError();
    return done;
}

OutputFile::OutputFile(const std::string& path) {
    static_cast<void>(attempt([&] { return (stream_ = openForWriting(path)) != nullptr; }));
}

bool OutputFile::write(std::span<const std::byte> bytes) {
    // An empty span's address can be null, which fwrite does not allow.
    return stream_ && (bytes.empty() || attempt([&] {
                           return std::fwrite(bytes.data(), 1, bytes.size(), stream_) == bytes.size();
                       }));
}

bool OutputFile::close() {
    std::FILE* const stream = std::exchange(stream_, nullptr);
    if (!stream)
        return false;
    // Flushed separately, because on some platforms fclose does not report a full disk.
    const bool flushed = attempt([stream] { return std::fflush(stream) == 0; });
    return attempt([stream] { return std::fclose(stream) == 0; }) && flushed;
}

bool copyOver(const std::string& source, const std::string& copy) {
    MappedFile original;
    if (!original.open(source))
        return false;
    const FileHandle file(
        CreateFileA(copy.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return false;
    const DWORD size = GetFileSize(file.get(), nullptr);
    const DWORD overwritten = std::min<DWORD>(size, original.size());
    // Grows the file first, so that a full disk is noticed before existing bytes are overwritten.
    if (!writeAt(file, overwritten, original.bytes().subspan(overwritten))) {
        static_cast<void>(cutAt(file, size));
        return false;
    }
    return writeAt(file, 0, original.bytes().first(overwritten)) && cutAt(file, original.size()) &&
           FlushFileBuffers(file.get());
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
    // A buffer that is still too small counts as a failure.
    directory.resize(length < directory.size() ? length : 0);
    if (!directory.empty() && !directory.ends_with('\\'))
        directory += '\\';
    return directory;
}

std::string localDataDirectory() {
    std::array<char, MAX_PATH> directory{};
    if (SHGetFolderPathA(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                         directory.data()) != S_OK)
        return {};
    return directory.data() + std::string("\\");
}

} // namespace base
