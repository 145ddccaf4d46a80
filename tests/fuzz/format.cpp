// Any texts put into the conversions of a pattern, compared with what the conversions mean.
#include "lib/base/formatting.h"
#include "tests/fuzz/fuzzing.h"

#include <algorithm>
#include <array>

using fuzzing::require;

namespace {

/// A pattern of pieces that the fuzzer chose, and what it gives with the texts.
class Composition {
public:
    explicit Composition(fuzzing::Input& input) : texts(textsFrom(input)) {
        for (std::size_t pieces = input.number(12); pieces > 0; --pieces)
            add(input);
    }

    const std::array<std::string, 4> texts;
    std::string pattern;
    std::string expected;

private:
    static std::array<std::string, 4> textsFrom(fuzzing::Input& input) {
        std::array<std::string, 4> result;
        for (std::string& text : result)
            text = input.line();
        return result;
    }

    void add(fuzzing::Input& input) {
        switch (input.number(4)) {
        case 0:
            addPlainText(static_cast<char>(1 + input.number(255)));
            break;
        case 1:
            pattern += "%%";
            expected += '%';
            break;
        default:
            if (used_ < texts.size())
                addConversion(input);
        }
    }

    void addPlainText(char character) {
        if (character == '%')
            return;
        pattern += character;
        expected += character;
    }

    void addConversion(fuzzing::Input& input) {
        std::string text = texts[used_++].c_str(); // a zero ends it
        const bool left = input.number(2) == 1;
        const std::size_t width = input.number(3) == 0 ? 0 : input.number(250);
        pattern += left ? "%-" : "%";
        if (width > 0)
            pattern += std::to_string(width);
        if (input.number(3) == 1) {
            const std::size_t precision = input.number(250);
            pattern += '.' + std::to_string(precision);
            text.resize(std::min(text.size(), precision));
        }
        pattern += 's';
        const std::string padding(width > text.size() ? width - text.size() : 0, ' ');
        expected += left ? text + padding : padding + text;
    }

    std::size_t used_ = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Input input(data, size);
    const Composition composition(input);
    const auto& [first, second, third, fourth] = composition.texts;
    const char* const pattern = composition.pattern.c_str();

    require(base::format(pattern, first, second, third, fourth) == composition.expected,
            "the texts stand in their places");
    require(base::format(pattern, first.c_str(), second.c_str(), third.c_str(), fourth.c_str()) ==
                composition.expected,
            "zero-terminated texts give the same");
    const std::size_t textsLength = first.size() + second.size() + third.size() + fourth.size();
    require(base::detail::estimateFormattedLength(pattern, textsLength) >= composition.expected.size(),
            "the estimate suffices");
    // What is no pattern of texts is estimated only.
    base::detail::estimateFormattedLength(std::string(input.rest()).c_str(), textsLength);
    return 0;
}
