#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace framework {

/// Replaces each "|" with a null character and appends two, as the dialog expects.
std::string dialogFilter(std::string_view sections);

/// Splits the dialog's null-terminated strings: a path, or a folder and at least two names. Returns a full
/// path, followed by names in the same folder.
std::vector<std::string> chosenFiles(std::string_view answer);

/// The text for a field: one path unchanged, or several full paths in double quotes, separated by spaces.
std::string chosenFilesText(const std::vector<std::string>& files);

} // namespace framework
