#include "tests/spider/invocation.h"

#include "lib/base/expressions.h"
#include "lib/base/strings.h"

#include <cstddef>
#include <vector>

namespace spider {

namespace {

std::string_view withoutQuotes(std::string_view word) {
    if (word.size() >= 2 && word.starts_with('"') && word.ends_with('"'))
        return word.substr(1, word.size() - 2);
    return word;
}

void takeSwitch(std::string_view word, Invocation& invocation) {
    const std::string_view value = word.substr(1);
    switch (word.front()) {
    case 's':
        invocation.runNumber = static_cast<std::uint32_t>(base::toInteger(value, 10));
        break;
    case 'a':
        invocation.dialupEntry = value;
        break;
    case 't':
        invocation.timeLimitMinutes = base::toInteger(value, 10);
        break;
    case 'd':
        invocation.disconnectWhenDone = true;
        break;
    case 'e':
        invocation.endWhenDone = true;
        break;
    case 'r':
    case 'u':
    case 'l':
    case 'c':
        if (value.empty())
            invocation.runCommand = word.front();
        else if (word == "register")
            invocation.registerTypes = true;
        break;
    default:
        break;
    }
}

} // namespace

Invocation parseInvocation(std::string_view commandLine) {
    Invocation invocation;
    const std::vector<std::string> words = base::commandToken.matchesIn(commandLine);
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string_view word = withoutQuotes(words[i]);
        if (word.size() > 1 && word.starts_with('/'))
            takeSwitch(word.substr(1), invocation);
        else
            invocation.projectPath = word;
    }
    return invocation;
}

} // namespace spider
