#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace framework {

/// Converts sections separated by "|" to the dialog's form: separated by zeros, with two at the end.
std::string dialogFilter(std::string_view sections);

/// Splits the dialog's answer: a path, or a folder and names, each followed by a zero, and a final zero. The
/// first file becomes a full path; the others stay names in the same folder.
std::vector<std::string> chosenFiles(std::string_view answer);

/// The text for a field: one path unchanged; several full paths in double quotes, with spaces between them.
std::string chosenFilesText(const std::vector<std::string>& files);

} // namespace framework
