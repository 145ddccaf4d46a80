#include "scheduler/run/commandline.h"

#include <cstddef>

namespace scheduler {

namespace {

// An unknown command is kept in the file, but adds no switch.
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

// The switches for connecting, hanging up and the time limit. Relinking works on local files only and takes
// none of them, not even /e.
std::string connectionSwitches(const ScheduledProject& entry) {
    std::string switches;
    // Switch and name are one quoted argument, because a name can have spaces.
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
