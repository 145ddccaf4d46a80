// A file's bytes, read and written by other means than the program's own.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace test {

/// Empty when there is no such file.
inline std::string fileContent(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

/// Replaces what the file held. False when the content could not be written.
inline bool writeFile(const std::string& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    return file.good();
}

} // namespace test
