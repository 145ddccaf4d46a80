// The plain rules in their surroundings.
#pragma once

#include "tests/simulation/spiders.h"
#include "tests/support/eventlog.h"

#include <string>
#include <vector>

namespace simulation {

// What both sides note, in the same words.
inline std::string launchEvent(const std::string& path, int number) {
    return "launch " + path + " as " + std::to_string(number);
}
inline std::string messageEvent(const std::string& path) {
    return "message for " + path;
}
inline std::string endEvent(bool matched, int number) {
    return (matched ? "end of " : "unmatched end of ") + std::to_string(number);
}
inline std::string showEvent(bool suspended) {
    return suspended ? "show suspended" : "show resumed";
}

class PlainSide {
public:
    explicit PlainSide(std::uint64_t seed)
        : spiders(seed),
          rules({[this](const plain::Item& item, Second now) {
                     events.push_back(launchEvent(item.path, item.number));
                     return spiders.launch(item.path, item.number, now);
                 },
                 [this](int number) { return spiders.take(number); },
                 [this](const plain::Item& item) { events.push_back(messageEvent(item.path)); },
                 [this] { events.push_back("redraw"); },
                 [this](bool suspended) { events.push_back(showEvent(suspended)); },
                 [this] {
                     events.push_back("save");
                     if (keepsSaves)
                         saved = rules.items;
                 }}) {}
    PlainSide(const PlainSide&) = delete;
    PlainSide& operator=(const PlainSide&) = delete;

    Spiders spiders;
    test::EventLog events;
    bool keepsSaves = false;
    std::vector<plain::Item> saved;
    plain::Rules rules;
};

} // namespace simulation
