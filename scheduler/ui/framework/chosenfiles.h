// What the platform's open-file dialog is given and gives, in texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace framework {

/// A filter as programs write it, its sections separated by "|", with the zeros that the dialog wants. The
/// result ends in two zeros whether or not the text ends in separators.
std::string dialogFilter(std::string_view sections);

/// The files in the dialog's answer: one path, or a folder and the names in it, each with a zero behind it
/// and one more at the end. The first file comes with its full path; each further one by its name within the
/// same folder.
std::vector<std::string> chosenFiles(std::string_view answer);

/// The text that stands for chosen files in a field: the path of a single one as it is, and the full paths of
/// several in double quotes with blanks between them.
std::string chosenFilesText(const std::vector<std::string>& files);

} // namespace framework
