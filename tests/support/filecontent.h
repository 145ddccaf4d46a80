// Reads and writes files independently of the program's code.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace test {

inline std::string fileContent(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

inline bool writeFile(const std::string& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    return file.good();
}

} // namespace test
