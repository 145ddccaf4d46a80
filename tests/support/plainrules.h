// A simple reference implementation of the schedule's rules. Uses no code of the program.
#pragma once

#include "tests/support/plainitem.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace plain {

struct Outcome {
    std::string text;
    unsigned error = 0;
};

/// Callbacks to the environment.
struct World {
    std::function<bool(const Item& item, Second now)> start; ///< false if no thread could be started
    std::function<Outcome(int number)> outcome;
    std::function<void(const Item& item)> message; ///< reports a system error
    std::function<void()> redraw;
    std::function<void(bool suspended)> show;
    std::function<void()> save;
};

/// Removes one entry. Its followers then follow its predecessor.
inline void removeOne(std::vector<Item>& items, int gone) {
    const int countBefore = static_cast<int>(items.size());
    int predecessor = items[static_cast<unsigned>(gone)].after;
    if (gone <= predecessor && predecessor != 0)
        --predecessor;
    for (Item& item : items) {
        if (item.after == gone)
            item.after = predecessor;
        else if (item.after > gone)
            item.after = item.after - 1 < countBefore ? item.after - 1 : countBefore;
    }
    items.erase(items.begin() + gone);
    for (int i = 0; i < countBefore - 1; ++i) {
        Item& item = items[static_cast<unsigned>(i)];
        if (item.kind == 0 && item.after == i)
            item.kind = 1;
    }
}

inline void removeAll(std::vector<Item>& items, std::vector<int> chosen) {
    std::sort(chosen.begin(), chosen.end());
    for (; !chosen.empty(); chosen.pop_back())
        removeOne(items, chosen.back());
}

class Rules {
public:
    explicit Rules(World outside) : world(std::move(outside)) {}

    World world;
    std::vector<Item> items;
    bool suspended = false;
    bool sideBySide = false;
    unsigned waitMinutes = 20;
    bool atLogOn = false;

    Second nextRunOf(const Item& item, Second now) const { return plain::nextRunOf(item, now, now, atLogOn); }

    void startProgram(Second now, bool bySystem) {
        atLogOn = bySystem;
        for (Item& item : items) {
            item.runs = 0;
            item.waitsSince = item.began = 0;
            item.number = 0;
            item.retried = 0;
            item.next = nextRunOf(item, now);
        }
        if (suspended)
            world.show(true);
        planAll(now);
        atLogOn = false;
    }

    void second(Second now) {
        if (!suspended)
            checkAll(now, false);
    }

    void dryRun(Second now) { checkAll(now, true); }

    void runManually(int i, Second now) {
        begin(at(i), now);
        if (world.start(at(i), now)) {
            world.redraw();
            return;
        }
        world.message(at(i));
        end(i, now, systemError(), now);
        showAndSave();
    }

    bool processEnded(int number, Second now) {
        for (int i = 0; i < count(); ++i) {
            Item& item = at(i);
            if (!item.runs || item.number != number)
                continue;
            Outcome outcome;
            if (item.isProject())
                outcome = world.outcome(number);
            else
                outcome.error = static_cast<unsigned>(number);
            end(i, now, outcome, now);
            showAndSave();
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

    void toggle(const std::vector<int>& chosen, Second now) {
        for (const int i : chosen) {
            at(i).off = !at(i).off;
            at(i).next = nextRunOf(at(i), now);
        }
        showAndSave();
    }

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
        showAndSave();
    }

    void drop(const std::vector<std::string>& files, Second now) {
        bool any = false;
        for (const std::string& file : files) {
            const std::string end = file.substr(file.size() - 4);
            if (end != ".kra" && end != ".krb" && end != ".krc" && end != ".KRA" && end != ".KRB" &&
                end != ".KRC")
                continue;
            Item item;
            item.path = file;
            item.next = nextRunOf(item, now);
            items.push_back(item);
            world.save();
            any = true;
        }
        if (any)
            world.redraw();
    }

    /// Copies the schedule and the retries, and keeps the run state.
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
        showAndSave();
    }

    void remove(const std::vector<int>& chosen) {
        removeAll(items, chosen);
        showAndSave();
    }

private:
    int count() const { return static_cast<int>(items.size()); }
    Item& at(int i) { return items[static_cast<unsigned>(i)]; }

    void showAndSave() {
        world.redraw();
        world.save();
    }

    void planAll(Second now) {
        for (Item& item : items) {
            if (!item.runs)
                item.next = nextRunOf(item, now);
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

    void checkAll(Second now, bool dry) {
        bool changed = false;
        for (int i = 0; i < count(); ++i) {
            const Item& item = at(i);
            if (item.off || item.runs || item.next > now)
                continue;
            if (sideBySide || highestNumberInUse() == 0) {
                start(i, now, dry);
                changed = true;
            } else {
                changed |= item.waitsSince != 0;
                wait(i, now);
            }
        }
        if (changed)
            world.redraw();
    }

    void begin(Item& item, Second now) {
        item.number = highestNumberInUse() + 1;
        item.runs = 1;
        item.began = now;
    }

    void wait(int i, Second now) {
        Item& item = at(i);
        if (item.waitsSince == 0) {
            item.waitsSince = now;
            return;
        }
        // Setting the clock back to a minute or more before the start of the wait ends the wait, unless waits
        // are endless.
        const bool setBack = item.waitsSince - now >= 60;
        const bool endless = waitMinutes > 0xF0000000;
        if (setBack ? !endless : now >= item.waitsSince + (Second{waitMinutes} + 1) * 60) {
            begin(item, now);
            end(i, now, {"Could not run on schedule; another project was already running.", 0}, now);
            world.save();
        }
    }

    void start(int i, Second now, bool dry) {
        begin(at(i), now);
        if (dry || world.start(at(i), now))
            return;
        end(i, now, systemError(), now);
        world.save();
    }

    static Outcome systemError() { return {"A system error prevented the project from running.", 0}; }

    void end(int i, Second ended, const Outcome& outcome, Second now) {
        Item& item = at(i);
        item.runs = 0;
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
    }
};

} // namespace plain
