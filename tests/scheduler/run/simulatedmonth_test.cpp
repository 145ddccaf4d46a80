// Months of hundreds of random entries with their chains, retries, conflicts and suspensions, in which the
// engine and the plainly told rules have to do the same, event by event.
#include "scheduler/run/engine.h"
#include "tests/scheduler/run/plainrules.h"
#include "tests/support/fakeclock.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <utility>

namespace scheduler {
namespace {

using base::TimeValue;
using plain::Second;

constexpr Second minute = 60;
constexpr Second hour = 60 * minute;
constexpr Second day = 24 * hour;

enum class Conflicts { Wait, SideBySide, Changing };

// Numbers of one simulation. The same on every platform, which the standard's distributions are not.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    int upTo(int highest) { return between(0, highest); }
    int between(int lowest, int highest) {
        return lowest + static_cast<int>(engine_() % static_cast<std::uint64_t>(highest - lowest + 1));
    }
    bool oneIn(int n) { return upTo(n - 1) == 0; }
    int oneOf(std::initializer_list<int> values) {
        return values.begin()[upTo(static_cast<int>(values.size()) - 1)];
    }

private:
    std::mt19937_64 engine_;
};

// The spiders: how long each run takes and what it leaves depends on the entry and on how often it ran
// before.
class Spiders {
public:
    explicit Spiders(std::uint64_t seed) : seed_(seed) {}

    bool launch(int item, int number, Second now) {
        const int runs = runsOf_[item]++;
        Dice dice(seed_ * 1'000'003 + static_cast<std::uint64_t>(item) * 10'007 +
                  static_cast<std::uint64_t>(runs));
        if (dice.oneIn(60))
            return false;
        End end{number, !dice.oneIn(9), {"outcome " + std::to_string(dice.upTo(99)), 0}};
        if (dice.oneIn(4))
            end.outcome.errorCode = static_cast<std::uint32_t>(dice.between(1, 9));
        ends_.emplace(now + duration(dice), end);
        return true;
    }

    /// The number of the next run that has ended by now, its outcome being left; 0: none has.
    int nextEnded(Second now) {
        if (ends_.empty() || ends_.begin()->first > now)
            return 0;
        const End end = ends_.begin()->second;
        ends_.erase(ends_.begin());
        if (end.leavesOutcome)
            left_[end.number] = end.outcome;
        return end.number;
    }

    Second nextEnd() const { return ends_.empty() ? plain::never : ends_.begin()->first; }

    RunOutcome take(int number) {
        RunOutcome outcome = left_[number];
        left_.erase(number);
        return outcome;
    }

    void forgetAll() {
        ends_.clear();
        left_.clear();
    }

private:
    struct End {
        int number;
        bool leavesOutcome;
        RunOutcome outcome;
    };

    static Second duration(Dice& dice) {
        const int kind = dice.upTo(99);
        if (kind < 45)
            return dice.upTo(4);
        if (kind < 80)
            return dice.between(5, 60);
        if (kind < 95)
            return dice.between(60, 600);
        return kind < 99 ? dice.between(600, 3600) : dice.between(3600, 4 * 3600);
    }

    std::uint64_t seed_;
    std::map<int, int> runsOf_;
    std::multimap<Second, End> ends_; // equal keys stay in the order of their coming
    std::map<int, RunOutcome> left_;
};

using Events = std::vector<std::string>;

std::string requestEvent(int item, int number) {
    return "request " + std::to_string(item) + " as " + std::to_string(number);
}
std::string launchEvent(int number) {
    return "launch " + std::to_string(number);
}

// The engine in its surroundings.
class EngineSide : RunLauncher, OutcomeSource, EngineListener, ScheduleStore, UserMessages {
public:
    explicit EngineSide(std::uint64_t seed) : spiders(seed) {}

    test::FakeClock clock;
    ScheduleList entries;
    RunPolicy policy;
    SchedulerEngine engine{entries, policy, {clock, *this, *this, *this, *this, *this}};
    Spiders spiders;
    Events events;

private:
    std::string commandLineOf(const ScheduledProject& entry) override {
        lastAsked_ = static_cast<int>(&entry - &entries[0]);
        events.push_back(requestEvent(lastAsked_, entry.runNumber));
        return entry.path;
    }
    bool launch(std::unique_ptr<RunRequest> request) override {
        const int number = static_cast<int>(request->runNumber);
        events.push_back(launchEvent(number));
        return spiders.launch(lastAsked_, number, clock.now().seconds());
    }
    RunOutcome take(std::uint32_t runNumber) override { return spiders.take(static_cast<int>(runNumber)); }
    void onScheduleChanged() override { events.push_back("redraw"); }
    void onSuspendedChanged(bool) override {}
    bool save(const ScheduleList&) override {
        events.push_back("save");
        return true;
    }
    void showError(const std::string&) override {}
    void showNotice(const std::string&) override {
        events.push_back("message for " + std::to_string(lastAsked_));
    }

    int lastAsked_ = 0;
};

// The plain rules in theirs.
class PlainSide {
public:
    explicit PlainSide(std::uint64_t seed)
        : rules({[this](int item, int number, Second now, bool dry) {
                     events.push_back(requestEvent(item, number));
                     if (dry)
                         return true;
                     events.push_back(launchEvent(number));
                     return spiders.launch(item, number, now);
                 },
                 [this](int number) {
                     const RunOutcome outcome = spiders.take(number);
                     return plain::Outcome{outcome.resultText, outcome.errorCode};
                 },
                 [this](int item) { events.push_back("message for " + std::to_string(item)); },
                 [this] { events.push_back("redraw"); }, [this] { events.push_back("save"); }}),
          spiders(seed) {}
    PlainSide(const PlainSide&) = delete;
    PlainSide& operator=(const PlainSide&) = delete;

    plain::Rules rules;
    Spiders spiders;
    Events events;
};

plain::Item randomItem(Dice& dice, int position, int count, int hourlyShare, Second start, Second end) {
    plain::Item item;
    item.isProject = !dice.oneIn(12);
    item.path = (item.isProject ? "" : "run:") + std::string("p") + std::to_string(position) + ".kra";
    const int share = dice.upTo(99);
    item.kind = share < hourlyShare
                    ? 2
                    : dice.oneOf({0, 0, 0, 0, 0, 0, 1, 3, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 6, -1});
    item.time = item.kind == 5 ? start + dice.between(-10'000, static_cast<int>(end - start))
                               : start + dice.between(-100'000'000, 100'000'000);
    if (dice.oneIn(3)) // several at the same moment
        item.time -= item.time % hour;
    item.after = dice.oneIn(25) ? position : dice.between(-1, count);
    item.minutes = item.kind == 2 ? dice.upTo(59) : dice.oneOf({0, 0, 1, 5, 10, 60, 1440});
    if (item.kind == 0 && item.after >= position) // no ring of entries may run on without a pause
        item.minutes = dice.between(30, 600);
    for (bool& runsThen : item.days)
        runsThen = dice.oneIn(2);
    item.days[static_cast<unsigned>(dice.upTo(6))] = true;
    item.dayOfMonth = dice.oneOf({-1, 0, 1, 2, 15, 28, 29, 30, 31, dice.between(1, 31), dice.between(1, 31)});
    item.off = dice.oneIn(15);
    item.retries = static_cast<unsigned>(dice.oneOf({0, 0, 0, 1, 2, 3}));
    item.retryMinutes = dice.oneOf({0, 1, 15, 15, 60});
    return item;
}

ScheduledProject entryFrom(const plain::Item& item) {
    ScheduledProject entry;
    entry.path = item.path;
    entry.kind = static_cast<ScheduleKind>(item.kind);
    entry.time = TimeValue(static_cast<std::int32_t>(item.time));
    entry.minutes = item.minutes;
    entry.afterIndex = item.after;
    for (std::size_t i = 0; i < 7; ++i)
        entry.weekdays[i] = item.days[i] ? 1 : 0;
    entry.dayOfMonth = item.dayOfMonth;
    entry.disabled = item.off ? 1 : 0;
    entry.retryLimit = item.retries;
    entry.retryIntervalMinutes = item.retryMinutes;
    return entry;
}

std::string stateOf(const plain::Item& item) {
    return "runs " + std::to_string(item.runs) + ", off " + std::to_string(item.off) + ", waits since " +
           std::to_string(item.waitsSince) + ", began " + std::to_string(item.began) + ", number " +
           std::to_string(item.number) + ", next " + std::to_string(item.next) + ", retried " +
           std::to_string(item.retried) + ", last " + std::to_string(item.lastRun) + ", " + item.result;
}

std::string stateOf(const ScheduledProject& entry) {
    plain::Item item;
    item.runs = entry.running != 0;
    item.off = entry.disabled != 0;
    item.waitsSince = entry.waitingSince.seconds();
    item.began = entry.runStart.seconds();
    item.number = entry.runNumber;
    item.next = entry.nextRun.seconds();
    item.retried = entry.retriesDone;
    item.lastRun = entry.lastRun.seconds();
    item.result = entry.lastResult;
    return stateOf(item);
}

// What the user does, and what else comes from outside.
struct Act {
    enum What { Suspend, Resume, RunByHand, SwitchOnOrOff, ForeignEnd, DryRun, Restart, ChangePolicy };
    What what;
    int argument = 0;
    bool flag = false;
};

class Simulation {
public:
    Simulation(std::uint64_t seed, Conflicts conflicts, Second start, Second length)
        : dice_(seed),
          conflicts_(conflicts),
          start_(start),
          end_(start + length),
          engine_(seed),
          plain_(seed) {
        plain_.rules.sideBySide = conflicts == Conflicts::SideBySide;
        plain_.rules.patience = static_cast<unsigned>(dice_.oneOf({0, 1, 20, 90}));
        constexpr int count = 250;
        const int hourlyShare = dice_.oneOf({1, 3, 8});
        for (int i = 0; i < count; ++i) {
            plain_.rules.items.push_back(randomItem(dice_, i, count, hourlyShare, start, end_));
            engine_.entries.append(entryFrom(plain_.rules.items.back()));
        }
        planActs(count, length);
    }

    /// Steps from one second at which something may happen to the next, or through each of them.
    void run(bool everySecond) {
        now_ = start_;
        restart(true);
        while (now_ < end_ && !testing::Test::HasFatalFailure()) {
            step();
            compare();
            now_ = everySecond ? now_ + 1 : nextInterestingSecond();
            ++steps_;
        }
    }

    int steps() const { return steps_; }
    std::size_t launches() const { return launches_; }

private:
    void planActs(int count, Second length) {
        const auto some = [&](int howMany, auto make) {
            for (int i = 0; i < howMany; ++i)
                acts_.emplace(start_ + dice_.between(1, static_cast<int>(length)), make());
        };
        const int days = static_cast<int>(length / day);
        some(2 * days, [&] { return Act{Act::RunByHand, dice_.upTo(count - 1)}; });
        some(2 * days, [&] { return Act{Act::SwitchOnOrOff, dice_.upTo(count - 1)}; });
        some(days, [&] { return Act{Act::ForeignEnd, dice_.oneOf({-1, 0, 1, 2, 3, 40, 1000})}; });
        some(1 + days / 10, [&] { return Act{Act::Restart, 0, dice_.oneIn(2)}; });
        some(1 + days / 6, [&] {
            return Act{Act::ChangePolicy, dice_.oneOf({0, 1, 5, 20, 60}), dice_.oneIn(2)};
        });
        for (int i = 0; i < 1 + days / 8; ++i) {
            const Second from = start_ + dice_.between(1, static_cast<int>(length));
            const Second to = from + dice_.between(0, dice_.oneOf({1, 600, 86'400}));
            acts_.emplace(from, Act{Act::Suspend});
            acts_.emplace(to, Act{Act::Resume});
            if (dice_.oneIn(3)) // while much is due that nobody starts
                acts_.emplace(std::max(from, to - 1), Act{Act::DryRun});
        }
        // What a dry run marks as running keeps the others waiting until the program is started again.
        for (int i = 0; i < 1 + days / 15; ++i) {
            const Second from = start_ + dice_.between(1, static_cast<int>(length));
            acts_.emplace(from, Act{Act::DryRun});
            acts_.emplace(from + dice_.between(1, 20'000), Act{Act::Restart, 0, dice_.oneIn(2)});
        }
    }

    void step() {
        engine_.clock.set(TimeValue(static_cast<std::int32_t>(now_)));
        deliverEnds();
        for (auto act = acts_.lower_bound(now_); act != acts_.end() && act->first == now_; ++act)
            perform(act->second);
        engine_.engine.onTimer(engineNow());
        plain_.rules.second(now_);
        deliverEnds();
    }

    void deliverEnds() {
        while (const int number = engine_.spiders.nextEnded(now_))
            noteEnd(engine_.events, engine_.engine.onRunFinished(static_cast<std::uint32_t>(number)), number);
        while (const int number = plain_.spiders.nextEnded(now_))
            noteEnd(plain_.events, plain_.rules.processEnded(number, now_), number);
    }

    static void noteEnd(Events& events, bool matched, int number) {
        events.push_back((matched ? "end of " : "unmatched end of ") + std::to_string(number));
    }

    void perform(const Act& act) {
        const auto position = static_cast<std::size_t>(act.argument);
        switch (act.what) {
        case Act::Suspend:
        case Act::Resume:
            engine_.engine.setSuspended(act.what == Act::Suspend);
            plain_.rules.suspend(act.what == Act::Suspend, now_);
            break;
        case Act::RunByHand:
            engine_.engine.runEntry(position, engineNow(), true);
            plain_.rules.byHand(act.argument, now_);
            break;
        case Act::SwitchOnOrOff: {
            ScheduledProject& entry = engine_.entries[position];
            entry.disabled = !entry.disabled;
            entry.nextRun = computeNextRun(engine_.engine.state(), entry, engineNow());
            plain_.rules.switchOnOrOff(act.argument, now_);
            break;
        }
        case Act::ForeignEnd:
            noteEnd(engine_.events, engine_.engine.onRunFinished(static_cast<std::uint32_t>(act.argument)),
                    act.argument);
            noteEnd(plain_.events, plain_.rules.processEnded(act.argument, now_), act.argument);
            break;
        case Act::DryRun:
            engine_.engine.testTick();
            plain_.rules.dryRun(now_);
            break;
        case Act::Restart:
            restart(act.flag);
            break;
        case Act::ChangePolicy:
            plain_.rules.patience = static_cast<unsigned>(act.argument);
            if (conflicts_ == Conflicts::Changing)
                plain_.rules.sideBySide = act.flag;
            copyPolicy();
            break;
        }
    }

    void restart(bool atLogOn) {
        copyPolicy();
        engine_.clock.set(TimeValue(static_cast<std::int32_t>(now_)));
        engine_.spiders.forgetAll();
        plain_.spiders.forgetAll();
        engine_.engine.setStartupFlag(atLogOn);
        engine_.engine.resetAll(engineNow());
        engine_.engine.recomputeAll(engineNow());
        engine_.engine.setStartupFlag(false);
        plain_.rules.startProgram(now_, atLogOn);
    }

    void copyPolicy() {
        engine_.policy.runMultiple = plain_.rules.sideBySide;
        engine_.policy.waitTime = plain_.rules.patience;
    }

    void compare() {
        ASSERT_EQ(engine_.events, plain_.events) << "at " << now_;
        for (const std::string& event : engine_.events)
            launches_ += event.starts_with("launch");
        engine_.events.clear();
        plain_.events.clear();
        // A state that differs stays so, or shows in the events.
        if (steps_ % 8 != 0)
            return;
        for (std::size_t i = 0; i < plain_.rules.items.size(); ++i) {
            const ScheduledProject& entry = engine_.entries[i];
            const plain::Item& item = plain_.rules.items[i];
            if (!same(entry, item))
                FAIL() << "entry " << i << " at " << now_ << "\nengine: " << stateOf(entry)
                       << "\nplain:  " << stateOf(item);
        }
    }

    static bool same(const ScheduledProject& entry, const plain::Item& item) {
        return entry.nextRun.seconds() == item.next && (entry.running != 0) == item.runs &&
               (entry.disabled != 0) == item.off && entry.waitingSince.seconds() == item.waitsSince &&
               entry.runStart.seconds() == item.began && entry.runNumber == item.number &&
               entry.retriesDone == item.retried && entry.lastRun.seconds() == item.lastRun &&
               entry.lastResult == item.result;
    }

    TimeValue engineNow() const { return TimeValue(static_cast<std::int32_t>(now_)); }

    // Whatever the engine's or the plain side's next second is in which anything may happen; and some seconds
    // more.
    Second nextInterestingSecond() {
        Second next = now_ + dice_.between(1, 7200);
        next = std::min({next, engine_.spiders.nextEnd(), plain_.spiders.nextEnd()});
        if (const auto act = acts_.upper_bound(now_); act != acts_.end())
            next = std::min(next, act->first);
        if (plain_.rules.suspended)
            return next;
        const bool engineRuns = engine_.engine.anyRunning();
        for (const ScheduledProject& entry : engine_.entries) {
            if (!entry.disabled && !entry.running)
                next = std::min(
                    next, interestOf(entry.nextRun.seconds(), entry.waitingSince.seconds(), engineRuns));
        }
        const auto isRunning = [](const plain::Item& item) { return item.runs; };
        const bool plainRuns = std::ranges::any_of(plain_.rules.items, isRunning);
        for (const plain::Item& item : plain_.rules.items) {
            if (!item.off && !item.runs)
                next = std::min(next, interestOf(item.next, item.waitsSince, plainRuns));
        }
        return next;
    }

    Second interestOf(Second nextRun, Second waitsSince, bool anotherRuns) const {
        if (nextRun > now_)
            return nextRun;
        const Second expiry = waitsSince + (Second{plain_.rules.patience} + 1) * minute;
        if (waitsSince == 0 || !anotherRuns || expiry <= now_ + 1)
            return now_ + 1;
        return expiry - 1;
    }

    Dice dice_;
    Conflicts conflicts_;
    Second start_, end_;
    Second now_ = 0;
    EngineSide engine_;
    PlainSide plain_;
    std::multimap<Second, Act> acts_;
    int steps_ = 0;
    std::size_t launches_ = 0;
};

// A beginning such that the clock changes within the next weeks; any, when it never does here, and now and
// then.
Second randomStart(Dice& dice) {
    static const std::vector<std::int32_t> changes = test::clockChanges();
    if (changes.empty() || dice.oneIn(4))
        return 1'700'000'000 + Second{dice.upTo(3000)} * day + dice.upTo(86'400);
    const auto change = changes[static_cast<std::size_t>(dice.upTo(static_cast<int>(changes.size()) - 1))];
    return change - dice.between(1, 20) * day - dice.upTo(86'400);
}

std::vector<std::uint64_t> seeds(int howMany) {
    if (const char* only = std::getenv("SCHEDULER_SEED"))
        return {std::strtoull(only, nullptr, 10)};
    std::vector<std::uint64_t> all;
    for (int i = 1; i <= howMany; ++i)
        all.push_back(static_cast<std::uint64_t>(i));
    return all;
}

class SimulatedMonthTest : public testing::TestWithParam<Conflicts> {
protected:
    static void simulate(int howMany, Second length, bool everySecond) {
        for (const std::uint64_t seed : seeds(howMany)) {
            SCOPED_TRACE("SCHEDULER_SEED=" + std::to_string(seed));
            Dice dice(seed ^ 0x5EED);
            const Second start = randomStart(dice);
            const auto simulation = std::make_unique<Simulation>(seed, GetParam(), start, length);
            simulation->run(everySecond);
            std::cout << "seed " << seed << " from " << start << ": " << simulation->steps() << " steps, "
                      << simulation->launches() << " runs\n";
            if (HasFatalFailure())
                return;
            EXPECT_GT(simulation->launches(), 10u);
        }
    }
};

TEST_P(SimulatedMonthTest, EngineDoesWhatThePlainRulesSay) {
    simulate(3, 31 * day, false);
}

TEST_P(SimulatedMonthTest, EverySecondOfADay) {
    simulate(1, 26 * hour, true);
}

INSTANTIATE_TEST_SUITE_P(Policies, SimulatedMonthTest,
                         testing::Values(Conflicts::Wait, Conflicts::SideBySide, Conflicts::Changing));

} // namespace
} // namespace scheduler
