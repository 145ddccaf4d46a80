// Fuzzes splitting a command line into words and finding the folder of its program.
#include "lib/base/expressions.h"
#include "scheduler/run/workingdirectory.h"
#include "tests/fuzz/fuzzing.h"

#include <algorithm>
#include <vector>

using fuzzing::require;

namespace {

constexpr std::string_view blanks = " \t\f\r\n";

bool isBlank(char character) {
    return blanks.find(character) != std::string_view::npos;
}

/// A word ends at white space. A word that begins with a quote does not end before its closing quote.
std::vector<std::string> plainWords(std::string_view text) {
    std::vector<std::string> words;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t end = at;
        while (end < text.size() && !isBlank(text[end]))
            ++end;
        if (text[at] == '"') {
            const std::size_t quote = text.find('"', at + 1);
            if (quote != std::string_view::npos)
                end = std::max(end, quote + 1);
        }
        if (end == at) {
            ++at;
            continue;
        }
        words.emplace_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

std::string plainFolder(std::string_view text) {
    const std::vector<std::string> words = plainWords(text);
    if (words.empty())
        return {};
    std::string word = words[0];
    const char quote = word[0];
    if (quote == '"' || quote == '\'') {
        word.erase(0, 1);
        if (!word.empty() && word.back() == quote)
            word.pop_back();
    }
    const bool hasBackslash = std::count(word.begin(), word.end(), '\\') > 0;
    while (!word.empty() && word.back() != (hasBackslash ? '\\' : '/'))
        word.pop_back();
    return word;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    require(base::commandToken.matchesIn(text) == plainWords(text), "commandToken agrees with plainWords()");
    require(scheduler::workingDirectoryOf(text) == plainFolder(text),
            "workingDirectoryOf() agrees with plainFolder()");
    return 0;
}
