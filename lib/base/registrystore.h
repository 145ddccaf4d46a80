#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace base {

/// Typed access to the values below a current path. enter() and leave() change the path.
class RegistryStore {
public:
    RegistryStore(HKEY root, std::string path) : root_(root), path_(std::move(path)) {}

    HKEY root() const { return root_; }
    const std::string& path() const { return path_; }

    /// Appends a backslash, unless the path is empty, and `name`. leave(name) removes both.
    void enter(std::string_view name);
    void leave(std::string_view name);

    [[nodiscard]] bool readNumber(const std::string& name, std::uint32_t& out);
    [[nodiscard]] bool readString(const std::string& name, std::string& out);
    [[nodiscard]] bool writeNumber(const std::string& name, std::uint32_t value);
    [[nodiscard]] bool writeString(const std::string& name, std::string_view text);

    // The value that the path itself names.
    [[nodiscard]] bool readBinaryHere(std::string& out) const;
    [[nodiscard]] bool writeBinaryHere(std::string_view bytes) const;

private:
    HKEY root_;
    std::string path_;
};

} // namespace base
