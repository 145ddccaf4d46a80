#include "scheduler/run/workingdirectory.h"

#include "lib/base/expressions.h"
#include "lib/base/paths.h"

#include <vector>

namespace scheduler {

namespace {

std::string_view withoutQuotes(std::string_view word) {
    for (const char quote : {'"', '\''}) {
        if (!word.starts_with(quote))
            continue;
        word.remove_prefix(1);
        if (word.ends_with(quote))
            word.remove_suffix(1);
        break;
    }
    return word;
}

} // namespace

std::string workingDirectoryOf(std::string_view commandLine) {
    const std::vector<std::string> words = base::commandToken.matchesIn(commandLine);
    return words.empty() ? std::string() : base::directoryOf(withoutQuotes(words.front()));
}

} // namespace scheduler
