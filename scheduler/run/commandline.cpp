#include "scheduler/run/commandline.h"

#include <cstddef>

namespace scheduler {

namespace {

// A schedule file can contain unknown commands; they add no switch.
std::string_view switchOf(RunCommand command) {
    switch (command) {
    case RunCommand::RunNormally:
        return " /r";
    case RunCommand::RunUpdateOnly:
        return " /u";
    case RunCommand::RelinkFiles:
        return " /l";
    case RunCommand::RunCompleteRefresh:
        return " /c";
    }
    return {};
}

// Not for relinking, which works on local files only.
std::string connectionSwitches(const ScheduledProject& entry) {
    std::string switches;
    // The name can have spaces. The quotes make the switch and the name one argument.
    if (!entry.dialupEntry.empty())
        switches += " \"/a" + entry.dialupEntry + '"';
    if (entry.disconnectWhenDone)
        switches += " /d";
    if (entry.timeLimitMinutes != 0)
        switches += " /t" + std::to_string(entry.timeLimitMinutes);
    switches += " /e";
    return switches;
}

} // namespace

SpiderCommand splitAssociation(std::string_view association) {
    if (!association.starts_with('"'))
        return {std::string(association), {}};
    association.remove_prefix(1);
    const std::size_t closingQuote = association.find('"');
    if (closingQuote == std::string_view::npos)
        return {std::string(association), {}};
    return {std::string(association.substr(0, closingQuote)),
            std::string(association.substr(closingQuote + 1))};
}

std::string composeCommandLine(const ScheduledProject& entry, std::string_view association) {
    if (isCommandLine(entry))
        return entry.path.substr(commandLinePrefix.size());

    const SpiderCommand spider = splitAssociation(association);
    std::string line = '"' + spider.program + '"' + spider.arguments;
    line += " /s" + std::to_string(entry.runNumber);
    line += switchOf(entry.runCommand);
    if (entry.runCommand != RunCommand::RelinkFiles)
        line += connectionSwitches(entry);
    line += " \"" + entry.path + '"';
    return line;
}

} // namespace scheduler
