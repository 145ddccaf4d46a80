// Any text cut at the separators of the date parsers, and at single characters.
#include "lib/base/regexp.h"
#include "lib/base/strings.h"
#include "tests/fuzz/fuzzing.h"

#include <vector>

using fuzzing::require;

namespace {

struct Separators {
    const char* characters;
    base::Expression expression;
};

const std::vector<std::string> cutAtRuns(std::string_view text, std::string_view separators) {
    std::vector<std::string> pieces(1);
    bool inRun = false;
    for (const char character : text) {
        const bool separates = separators.find(character) != std::string_view::npos;
        if (separates && !inRun)
            pieces.emplace_back();
        if (!separates)
            pieces.back() += character;
        inRun = separates;
    }
    return pieces;
}

const std::vector<std::string> cutAt(std::string_view text, char separator) {
    std::vector<std::string> pieces(1);
    for (const char character : text) {
        if (character == separator)
            pieces.emplace_back();
        else
            pieces.back() += character;
    }
    return pieces;
}

std::string at(const std::vector<std::string>& pieces, std::size_t n) {
    return n < pieces.size() ? pieces[n] : std::string();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Separators all[] = {{", ", base::Expression("[, ]+")},
                                     {",- ", base::Expression("[,\\- ]+")},
                                     {" :-", base::Expression("[ :\\-]+")},
                                     {" :", base::Expression("[ :]+")},
                                     {" /-#.\\:", base::Expression("[ /\\-#.\\\\:]+")},
                                     {" \r\n\t\f", base::Expression("[ \r\n\t\f]+")}};
    fuzzing::Input input(data, size);
    const Separators& separators = all[input.number(std::size(all))];
    const std::size_t far = input.number(256);
    const std::string_view text = input.rest();

    const std::vector<std::string> pieces = cutAtRuns(text, separators.characters);
    for (const std::size_t n : {std::size_t{0}, std::size_t{1}, std::size_t{2}, far, pieces.size() - 1,
                                pieces.size(), static_cast<std::size_t>(-1)})
        require(base::piece(text, n, separators.expression) == at(pieces, n), "a piece at runs");

    const char separator = separators.characters[0];
    const std::vector<std::string> singles = cutAt(text, separator);
    for (const std::size_t n : {std::size_t{0}, std::size_t{1}, far, singles.size() - 1, singles.size()})
        require(base::pieceAt(text, n, separator) == at(singles, n), "a piece at single characters");
    return 0;
}
