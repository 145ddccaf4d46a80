// A file's bytes, read by other means than the program's own.
#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace test {

/// Empty when there is no such file.
inline std::string fileContent(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace test
