// Fuzzes the command registered for projects, and the spider's command line that is built from it.
#include "lib/base/placeholders.h"
#include "scheduler/run/commandline.h"
#include "tests/fuzz/fuzzing.h"

using fuzzing::require;

namespace {

template<class LengthAt>
std::string without(const std::string& text, LengthAt lengthAt) {
    std::string rest;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthAt(text, at);
        if (length == 0)
            rest += text[at++];
        else
            at += length;
    }
    return rest;
}

std::size_t placeholderAt(const std::string& text, std::size_t at) {
    return text[at] == '%' && at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '9' ? 2 : 0;
}

std::size_t quotesAt(const std::string& text, std::size_t at) {
    return text.substr(at, 2) == "\"\"" ? 2 : 0;
}

bool isBlank(char character) {
    return character == ' ' || character == '\r' || character == '\n' || character == '\t' ||
           character == '\f';
}

std::string plainAssociation(const std::string& command) {
    std::string rest = without(without(command, placeholderAt), quotesAt);
    while (!rest.empty() && isBlank(rest.back()))
        rest.pop_back();
    while (!rest.empty() && isBlank(rest.front()))
        rest.erase(0, 1);
    return rest;
}

scheduler::ScheduledProject entryFrom(fuzzing::Input& input) {
    scheduler::ScheduledProject entry;
    entry.runCommand = static_cast<scheduler::RunCommand>(static_cast<int>(input.number(6)) - 1);
    entry.runNumber = static_cast<std::int32_t>(input.number(256));
    entry.disconnectWhenDone = static_cast<std::uint8_t>(input.number(2));
    entry.timeLimitMinutes = static_cast<std::int32_t>(input.number(3)) - 1;
    entry.path = input.line();
    entry.dialupEntry = input.line();
    return entry;
}

std::string plainLine(const scheduler::ScheduledProject& entry, const std::string& association) {
    if (entry.path.substr(0, 4) == "run:")
        return entry.path.substr(4);
    std::string program = association, fixed;
    const bool quoted = !association.empty() && association[0] == '"';
    if (quoted) {
        const std::size_t end = association.find('"', 1);
        program = end == std::string::npos ? association.substr(1) : association.substr(1, end - 1);
        fixed = end == std::string::npos ? "" : association.substr(end + 1);
    }
    std::string line = "\"" + program + "\"" + fixed + " /s" + std::to_string(entry.runNumber);
    const int command = static_cast<int>(entry.runCommand);
    if (command >= 0 && command < 4)
        line += std::string(" /") + "rulc"[command];
    if (command != 2) {
        line += entry.dialupEntry.empty() ? "" : " \"/a" + entry.dialupEntry + "\"";
        line += entry.disconnectWhenDone ? " /d" : "";
        line += entry.timeLimitMinutes != 0 ? " /t" + std::to_string(entry.timeLimitMinutes) : "";
        line += " /e";
    }
    return line + " \"" + entry.path + "\"";
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Input input(data, size);
    const scheduler::ScheduledProject entry = entryFrom(input);
    const std::string command(input.rest());

    const std::string association = base::withoutPlaceholders(command);
    require(association == plainAssociation(command), "withoutPlaceholders() agrees with plainAssociation()");
    require(scheduler::composeCommandLine(entry, association) == plainLine(entry, association),
            "composeCommandLine() agrees with plainLine()");
    return 0;
}
