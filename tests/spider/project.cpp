#include "tests/spider/project.h"

#include "lib/base/strings.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace spider {

namespace {

std::chrono::milliseconds millisecondsFrom(const std::string& number, double unit) {
    constexpr double longest = 1e9; // eleven days, beyond any run, and no overflow
    const double value = std::strtod(number.c_str(), nullptr) * unit;
    return std::chrono::milliseconds(static_cast<std::int64_t>(std::clamp(value, 0.0, longest)));
}

void takeSetting(std::string_view name, const std::string& value, Project& project) {
    if (name == "seconds")
        project.duration = millisecondsFrom(value, 1000);
    else if (name == "ms")
        project.duration = millisecondsFrom(value, 1);
    else if (name == "result")
        project.result = value;
    else if (name == "error")
        project.error = static_cast<std::uint32_t>(base::toInteger(value, 10));
    else if (name == "result-as-number")
        project.resultAsNumber = value == "1";
    else if (name == "leave")
        project.leaveNothing = value == "nothing";
    else if (name == "crash")
        project.crash = value == "1";
}

} // namespace

Project parseProject(std::string_view text) {
    Project project;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string line = base::trim(text.substr(0, end), base::whitespace);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos && !line.starts_with('#'))
            takeSetting(line.substr(0, equals), line.substr(equals + 1), project);
    }
    return project;
}

std::chrono::milliseconds runTime(const Project& project, std::optional<std::int64_t> timeLimitMinutes) {
    constexpr std::int64_t longest = 10'000'000; // minutes
    const std::int64_t limit = std::clamp<std::int64_t>(timeLimitMinutes.value_or(0), 0, longest);
    return limit == 0 ? project.duration
                      : std::min<std::chrono::milliseconds>(project.duration, std::chrono::minutes(limit));
}

} // namespace spider
