// The rules of a schedule told once more, as plainly as they can be, to compare the engine with.
//
// Nothing of the program's own is used: fields, calendar and bookkeeping are this file's.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace plain {

using Second = std::int64_t;

constexpr Second never = 2147483647;

inline std::tm fieldsOf(Second second) {
    const auto time = static_cast<std::time_t>(second);
    return *std::localtime(&time);
}

inline Second secondOf(int year, int month, int day, int hour) {
    std::tm fields{};
    fields.tm_year = year;
    fields.tm_mon = month;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_isdst = -1;
    return static_cast<Second>(std::mktime(&fields));
}

struct Item {
    std::string path;
    bool isProject = true;
    int kind = 0;
    Second time = 0;
    int minutes = 0;
    int after = 0;
    std::array<bool, 7> days = {true, true, true, true, true, true, true}; // Monday first
    int dayOfMonth = 1;
    bool off = false;
    unsigned retries = 0;
    int retryMinutes = 15;

    bool runs = false;
    Second waitsSince = 0;
    Second began = 0;
    int number = 0;
    Second next = 0;
    unsigned retried = 0;
    Second lastRun = 0;
    std::string result;

    friend bool operator==(const Item&, const Item&) = default;
};

struct Outcome {
    std::string text;
    unsigned error = 0;
};

/// What happens outside: the answers are the world's, the questions come in the order of events.
struct World {
    std::function<bool(const Item& item, Second now, bool dry)> start; ///< false: no thread for it
    std::function<Outcome(int number)> outcome;
    std::function<void(const Item& item)> message; ///< the user is told of a system error
    std::function<void()> redraw;
    std::function<void(bool suspended)> show; ///< that the program is suspended or resumed
    std::function<void()> save;
};

class Rules {
public:
    explicit Rules(World outside) : world(std::move(outside)) {}

    World world;
    std::vector<Item> items;
    bool suspended = false;
    bool sideBySide = false;
    unsigned patience = 20; // minutes
    bool atLogOn = false;

    Second nextRunOf(const Item& item, Second now) const {
        const std::tm today = fieldsOf(now);
        const std::tm timeFields = item.time < 0 ? std::tm{} : fieldsOf(item.time);
        const int clockTime = (timeFields.tm_hour * 60 + timeFields.tm_min) * 60 + timeFields.tm_sec;
        switch (item.kind) {
        case 1:
            return atLogOn ? 0 : never;
        case 2: {
            const Second thisHour = secondOf(today.tm_year, today.tm_mon, today.tm_mday, today.tm_hour);
            const int hoursOn = today.tm_min < item.minutes ? 0 : 1;
            return thisHour + (hoursOn * 60 + item.minutes) * 60;
        }
        case 3: {
            Second day = secondOf(today.tm_year, today.tm_mon, today.tm_mday, 0) + clockTime;
            if (day < now)
                day += 24 * 3600;
            for (int tries = 0; tries < 7 && !item.days[static_cast<unsigned>(fieldsOf(day).tm_wday + 6) % 7];
                 ++tries)
                day += 24 * 3600;
            return day;
        }
        case 4: {
            const Second intoMonth =
                Second{item.dayOfMonth < 1 ? 0 : item.dayOfMonth - 1} * 24 * 3600 + clockTime;
            const Second inThis = secondOf(today.tm_year, today.tm_mon, 1, 0) + intoMonth;
            if (inThis >= now)
                return inThis;
            return today.tm_mon == 11 ? secondOf(today.tm_year + 1, 0, 1, 0) + intoMonth
                                      : secondOf(today.tm_year, today.tm_mon + 1, 1, 0) + intoMonth;
        }
        case 5:
            return item.time > now ? item.time : never;
        default:
            return never;
        }
    }

    void startProgram(Second now, bool bySystem) {
        atLogOn = bySystem;
        for (Item& item : items) {
            item.runs = false;
            item.waitsSince = item.began = 0;
            item.number = 0;
            item.retried = 0;
            item.next = nextRunOf(item, now);
        }
        if (suspended)
            suspend(true, now);
        planAll(now);
        atLogOn = false;
    }

    void second(Second now) {
        if (!suspended)
            lookAtAll(now, false);
    }

    void dryRun(Second now) {
        lookAtAll(now, true);
        world.redraw();
    }

    void byHand(int i, Second now) { start(i, now, true, false); }

    bool processEnded(int number, Second now) {
        for (int i = 0; i < count(); ++i) {
            Item& item = at(i);
            if (!item.runs || item.number != number)
                continue;
            Outcome outcome;
            if (item.isProject)
                outcome = world.outcome(number);
            else
                outcome.error = static_cast<unsigned>(number);
            end(i, now, outcome, now);
            return true;
        }
        return false;
    }

    void suspend(bool on, Second now) {
        suspended = on;
        planAll(now);
        world.redraw();
        world.show(on);
    }

    void switchOnOrOff(const std::vector<int>& chosen, Second now) {
        for (const int i : chosen) {
            at(i).off = !at(i).off;
            at(i).next = nextRunOf(at(i), now);
        }
        world.save();
    }

    /// What the editor shows for an entry that is to be added.
    Item fresh(Second now) const {
        Item item;
        item.kind = items.empty() ? 1 : 0;
        item.after = items.empty() ? 0 : static_cast<int>(items.size()) - 1;
        item.time = now + 60;
        while (item.time % 60 != 0)
            --item.time;
        return item;
    }

    void add(Item item, Second now) {
        item.next = nextRunOf(item, now);
        items.push_back(item);
        world.save();
    }

    void drop(const std::vector<std::string>& files, Second now) {
        for (const std::string& file : files) {
            const std::string end = file.substr(file.size() - 4);
            if (end != ".kra" && end != ".krb" && end != ".krc" && end != ".KRA" && end != ".KRB" &&
                end != ".KRC")
                continue;
            Item item;
            item.path = file;
            add(item, now);
        }
    }

    /// Takes over what the editor shows; what a run has left in the entry stays.
    void edit(int i, const Item& shown, Second now) {
        Item& item = at(i);
        item.kind = shown.kind;
        item.time = shown.time;
        item.minutes = shown.minutes;
        item.after = shown.after;
        item.days = shown.days;
        item.dayOfMonth = shown.dayOfMonth;
        item.retries = shown.retries;
        item.retryMinutes = shown.retryMinutes;
        item.next = nextRunOf(item, now);
        world.redraw();
        world.save();
    }

    void remove(std::vector<int> chosen) {
        std::sort(chosen.begin(), chosen.end());
        for (; !chosen.empty(); chosen.pop_back())
            removeOne(chosen.back());
        world.save();
    }

private:
    int count() const { return static_cast<int>(items.size()); }
    Item& at(int i) { return items[static_cast<unsigned>(i)]; }

    void planAll(Second now) {
        for (Item& item : items) {
            if (!item.runs)
                item.next = nextRunOf(item, now);
        }
    }

    void removeOne(int gone) {
        const int countBefore = count();
        int heir = at(gone).after;
        if (gone <= heir && heir != 0)
            --heir;
        for (Item& item : items) {
            if (item.after == gone)
                item.after = heir;
            else if (item.after > gone)
                item.after = item.after - 1 < countBefore ? item.after - 1 : countBefore;
        }
        items.erase(items.begin() + gone);
        for (int i = 0; i < count(); ++i) {
            if (at(i).kind == 0 && at(i).after == i)
                at(i).kind = 1;
        }
    }

    int highestNumberInUse() const {
        int number = 0;
        for (const Item& item : items) {
            if (item.runs && item.number > number)
                number = item.number;
        }
        return number;
    }

    void lookAtAll(Second now, bool dry) {
        for (int i = 0; i < count(); ++i) {
            const Item& item = at(i);
            if (item.off || item.runs || item.next > now)
                continue;
            if (sideBySide || highestNumberInUse() == 0)
                start(i, now, false, dry);
            else
                wait(i, now);
        }
    }

    void begin(Item& item, Second now) {
        item.number = highestNumberInUse() + 1;
        item.runs = true;
        item.began = now;
    }

    void wait(int i, Second now) {
        Item& item = at(i);
        if (item.waitsSince == 0) {
            item.waitsSince = now;
            return;
        }
        // A clock that was set back behind the beginning of the wait by a minute or more ends it, unless the
        // patience is endless.
        const bool setBack = item.waitsSince - now >= 60;
        const bool endless = patience > 0xF0000000;
        if (setBack ? !endless : now >= item.waitsSince + (Second{patience} + 1) * 60) {
            begin(item, now);
            end(i, now, {"Could not run on schedule; another project was already running.", 0}, now);
        }
        world.redraw();
    }

    void start(int i, Second now, bool manual, bool dry) {
        begin(at(i), now);
        const bool started = world.start(at(i), now, dry);
        if (dry)
            return;
        if (!started) {
            if (manual)
                world.message(at(i));
            end(i, now, {"A system error prevented the project from running.", 0}, now);
        }
        world.redraw();
    }

    void end(int i, Second ended, const Outcome& outcome, Second now) {
        Item& item = at(i);
        item.runs = false;
        item.waitsSince = 0;
        item.lastRun = item.began;
        item.result = outcome.text;
        if (outcome.error != 0 && item.retried < item.retries) {
            ++item.retried;
            item.next = now + item.retryMinutes * 60 + 5;
        } else {
            item.retried = 0;
            item.next = nextRunOf(item, ended);
            for (Item& other : items) {
                if (other.kind == 0 && other.after == i)
                    other.next = ended + other.minutes * 60;
            }
        }
        world.redraw();
        world.save();
    }
};

} // namespace plain
