// Simulates the program and the plain rules over the same days, and compares their events and schedules.
#pragma once

#include "tests/simulation/sides.h"
#include "tests/support/plainentries.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace simulation {

constexpr Second minute = 60;
constexpr Second hour = 60 * minute;
constexpr Second day = 24 * hour;

enum class Conflicts { Wait, SideBySide, Changing };

struct Plan {
    Conflicts conflicts = Conflicts::Changing;
    Second start = 0;
    Second length = 31 * day;
    int entries = 250;
    Mix mix;
    double actsPerDay = 8;
    double daysPerRestart = 10;
    double daysPerSuspension = 8;
    double daysPerDryRun = 15;
    double daysPerClockChange = 40;
    int stepsPerComparison = 8; ///< for schedules; events are compared at each step
};

class Simulation {
public:
    Simulation(std::uint64_t seed, const Plan& plan);

    /// Simulates every second, or only those with possible events. Fails fatally at the first difference.
    void run(bool everySecond);

    int steps() const { return steps_; }
    std::size_t launches() const { return launches_; }

private:
    struct Act {
        enum What {
            RunByHand,
            Toggle,
            Add,
            Drop,
            Edit,
            Remove,
            ForeignEnd,
            ChangePolicy,
            Suspend,
            Resume,
            DryRun,
            Restart,
            SaveBeforeKill, ///< keep saves from now on, to load after the kill
            Kill,
            MoveClock,
        };
        What what;
        Second argument = 0;
    };

    void planActs();
    Act randomAct();
    Second randomTime();
    void plan(Second at, Act::What what, Second argument = 0) { acts_.emplace(at, Act{what, argument}); }

    void step();
    void deliverEnds();
    void perform(const Act& act);
    plain::Item randomItemNow(int serial, int position);
    void add();
    void drop();
    void edit(int position, const plain::Item& shown);
    void remove();
    void slowDownCycles();
    void changePolicy();
    void exitAndStart(Second secondsOff);
    void killAndStart(Second secondsOff);
    void start(const std::vector<std::byte>& file, const std::vector<plain::Item>& items);
    void compare();

    int count() const { return static_cast<int>(plain_.rules.items.size()); }
    std::vector<int> randomSelection();
    base::TimeValue engineNow() const { return base::TimeValue(static_cast<std::int32_t>(now_)); }

    Second nextEventSecond();
    Second nextEventOf(Second nextRun, Second waitsSince, bool anotherRuns) const;

    Dice dice_;
    Plan plan_;
    Second now_;
    Second end_;
    EngineSide engine_;
    PlainSide plain_;
    std::multimap<Second, Act> acts_; // pending
    int serial_ = 0;
    bool killable_ = false;
    int steps_ = 0;
    std::size_t launches_ = 0;
};

} // namespace simulation
