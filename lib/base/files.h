#pragma once

#include "lib/base/handles.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>

namespace base {

/// A read-only view of a whole file; empty unless open() succeeded.
class [[nodiscard]] MappedFile {
public:
    MappedFile() = default;
    ~MappedFile() { close(); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// Closes any open file first. False if a step fails or the file is empty. Blocks writers until close().
    [[nodiscard]] bool open(const std::string& path);

    void close();

    /// Valid until close().
    std::span<const std::byte> bytes() const { return {view_, size_}; }
    std::uint32_t size() const { return size_; }
    bool isOpen() const { return view_ != nullptr; }

private:
    FileHandle file_;
    KernelHandle mapping_;
    const std::byte* view_ = nullptr;
    std::uint32_t size_ = 0;
};

/// Creates or truncates a file. Child processes do not inherit the handle, which would keep the file open.
class [[nodiscard]] OutputFile {
public:
    explicit OutputFile(const std::string& path);
    ~OutputFile() { static_cast<void>(close()); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] bool write(std::span<const std::byte> bytes);

    /// False if the file is not open or buffered data cannot be written.
    [[nodiscard]] bool close();

    bool isOpen() const { return stream_ != nullptr; }
    /// The system's error code of the first step that failed; 0 if none.
    std::uint32_t error() const { return error_; }

private:
    template<class Step>
    [[nodiscard]] bool attempt(const Step& step);

    std::FILE* stream_ = nullptr;
    std::uint32_t error_ = 0;
};

/// Copies `source` over `copy`, which is created if missing, and waits until the disk has the data. False if
/// a step fails or `source` is empty. If the disk is full, `copy` keeps its content.
[[nodiscard]] bool copyOver(const std::string& source, const std::string& copy);

[[nodiscard]] bool anyFileMatches(const std::string& pattern);

[[nodiscard]] bool fileExists(const std::string& path);

/// Ends in a backslash. Empty on failure.
std::string windowsDirectory();

/// The current user's folder for local data, created if missing. Ends in a backslash. Empty on failure.
std::string localDataDirectory();

} // namespace base
