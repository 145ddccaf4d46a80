// Files on disk: a read-only view of one, whole writes, copies, and whether one is there.
#pragma once

#include "lib/base/handles.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>

namespace base {

/// A read-only view of a whole file. Empty (no view, size 0) unless open() succeeded.
class [[nodiscard]] MappedFile {
public:
    MappedFile() = default;
    ~MappedFile() { close(); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// Closes what was open, then maps the file at `path`. False, and an empty object, when any step fails;
    /// an empty file cannot be mapped. Other readers are let in, writers are not.
    [[nodiscard]] bool open(const std::string& path);

    void close();

    /// The file's bytes, valid until close().
    std::span<const std::byte> bytes() const { return {view_, size_}; }
    std::uint32_t size() const { return size_; }
    bool isOpen() const { return view_ != nullptr; }

private:
    FileHandle file_;
    KernelHandle mapping_;
    const std::byte* view_ = nullptr;
    std::uint32_t size_ = 0;
};

/// A file that is written anew, through a stream opened for binary writing and truncation. No child process
/// inherits its handle: a process that is started meanwhile would keep the file open, and unreadable, until
/// it ends.
class [[nodiscard]] WrittenFile {
public:
    /// Whatever the file held is gone when this succeeds.
    explicit WrittenFile(const std::string& path);
    ~WrittenFile() { static_cast<void>(close()); }
    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;

    /// Adds to the file's end. False when the file is not open or the bytes could not be written.
    [[nodiscard]] bool write(std::span<const std::byte> bytes);

    /// False when the file is not open or what was written did not reach it.
    [[nodiscard]] bool close();

    bool isOpen() const { return stream_ != nullptr; }
    /// The platform's error of the first step that failed; 0 if none has.
    std::uint32_t error() const { return error_; }

private:
    template<class Step>
    [[nodiscard]] bool attempt(const Step& step);

    std::FILE* stream_ = nullptr;
    std::uint32_t error_ = 0;
};

/// Copies a file over `copy`, which is made if need be, and waits until the disk has the bytes. False when a
/// step fails. A copy that has no room to grow keeps its content. An empty file is not copied.
[[nodiscard]] bool copyOver(const std::string& source, const std::string& copy);

/// Whether at least one file matches a pattern that may hold "*" and "?".
[[nodiscard]] bool anyFileMatches(const std::string& pattern);

/// Whether the attributes of a file or folder can be read.
[[nodiscard]] bool fileExists(const std::string& path);

/// The Windows directory, with a backslash at its end. Empty when the platform does not tell.
std::string windowsDirectory();

/// The folder for data of the current user on this machine, with a backslash at its end; created when it is
/// missing. Empty when the platform does not tell.
std::string localDataDirectory();

} // namespace base
