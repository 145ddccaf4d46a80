#include "scheduler/ui/framework/chosenfiles.h"

#include "lib/base/formatting.h"
#include "lib/base/paths.h"

#include <algorithm>

namespace framework {
namespace {

std::vector<std::string> piecesOf(std::string_view answer) {
    std::vector<std::string> pieces;
    while (!answer.empty() && answer.front() != '\0') {
        pieces.emplace_back(answer.substr(0, answer.find('\0')));
        answer.remove_prefix(std::min(pieces.back().size() + 1, answer.size()));
    }
    return pieces;
}

} // namespace

std::string dialogFilter(std::string_view sections) {
    std::string filter(sections);
    std::ranges::replace(filter, '|', '\0');
    filter.append(2, '\0');
    return filter;
}

std::vector<std::string> chosenFiles(std::string_view answer) {
    std::vector<std::string> pieces = piecesOf(answer);
    if (pieces.size() < 2)
        return pieces;
    // Only a drive's root folder ends in a backslash.
    const std::string separator = pieces.front().ends_with('\\') ? "" : "\\";
    pieces[1] = pieces.front() + separator + pieces[1];
    pieces.erase(pieces.begin());
    return pieces;
}

std::string chosenFilesText(const std::vector<std::string>& files) {
    if (files.empty())
        return {};
    if (files.size() == 1)
        return files.front();
    const std::string folder = base::directoryOf(files.front());
    std::string text = base::format("%s\"%s\"", std::string(), files.front());
    for (std::size_t next = 1; next < files.size(); ++next)
        text += base::format("%s\"%s\"", std::string(" "), folder + files[next]);
    return text;
}

} // namespace framework
