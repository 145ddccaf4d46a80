// Kills a process at each system call of a save. No kill may lose the previous schedule.

#include "lib/base/files.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "tests/scheduler/model/schedulefolder.h"
#include "tests/support/timeout.h"

#include <gtest/gtest.h>

#include <iostream>
#include <utility>
#include <vector>

namespace {

using test::contentOf;
using test::fileContent;

struct Schedule {
    std::string name;
    std::size_t count;

    std::string content() const { return contentOf(name, count); }
    std::string argument() const { return " " + name + " " + std::to_string(count); }
};

class KilledSave : public test::ScheduleFolder {
protected:
    struct Kills {
        unsigned count = 0;
        unsigned truncatedFiles = 0; ///< kills that left a truncated schedule.dat
    };

    /// Repeats the saves in new processes until one process completes them. Each is killed during the last
    /// save, one system call later than the previous one.
    template<class Prepare, class Expect>
    static Kills killAtEachCall(const std::vector<Schedule>& saves, const Prepare& prepare,
                                const Expect& expectNothingLost) {
        std::string schedules;
        for (const Schedule& schedule : saves)
            schedules += schedule.argument();
        Kills kills;
        for (;;) {
            clear();
            prepare();
            const std::string call = std::to_string(kills.count + 1);
            const std::string program = base::directoryOf(base::executablePath()) + "savingprocess.exe";
            const std::uint32_t code = base::runProcessAndWait("\"" + program + "\" " + call + schedules,
                                                               SW_HIDE, "", test::timeout);
            SCOPED_TRACE("call " + call);
            expectNothingLost();
            if (code != 1 || HasFailure()) {
                EXPECT_EQ(code, 0U);
                EXPECT_TRUE(holds(dat(), saves.back()));
                return kills;
            }
            ++kills.count;
            scheduler::ScheduleList list;
            kills.truncatedFiles += !scheduler::loadSchedule(list, 0x0046C71C);
        }
    }

    static bool holds(const std::string& path, const Schedule& schedule) {
        return fileContent(path) == schedule.content();
    }

    static void report(const Kills& kills) {
        EXPECT_GT(kills.truncatedFiles, 0U) << "no kill happened during the write";
        std::cout << kills.count << " kills, " << kills.truncatedFiles << " left a truncated file\n";
    }
};

// Entry counts before and after. A single entry is written in one piece, 3000 entries in several.
const std::vector<std::pair<std::size_t, std::size_t>> sizes = {{3000, 1}, {1, 3000}};

TEST_F(KilledSave, FirstSaveAfterALoadLosesNothing) {
    for (const auto& [countBefore, countAfter] : sizes) {
        const Schedule older{"older", 2};
        const Schedule before{"before", countBefore};
        const Schedule after{"after", countAfter};
        report(killAtEachCall(
            {after},
            [&] {
                put(bak(), older.content());
                put(dat(), before.content());
            },
            [&] { EXPECT_TRUE(holds(bak(), before) || holds(dat(), before)) << "schedule lost"; }));
    }
}

TEST_F(KilledSave, LaterSaveLosesNothing) {
    for (const auto& [countBefore, countAfter] : sizes) {
        const Schedule loaded{"loaded", 2};
        const Schedule before{"before", countBefore};
        const Schedule after{"after", countAfter};
        report(killAtEachCall(
            {before, after}, [&] { put(dat(), loaded.content()); },
            [&] { EXPECT_TRUE(holds(bak(), before) || holds(dat(), before)) << "schedule lost"; }));
    }
}

TEST_F(KilledSave, SaveAfterADamagedLoadKeepsTheDamagedFileAndTheCopy) {
    const std::string cut = Schedule{"before", 3000}.content().substr(0, 200'000);
    const Schedule good{"good", 3000};
    report(killAtEachCall(
        {{"after", 3000}},
        [&] {
            put(bak(), good.content());
            put(dat(), cut);
        },
        [&] {
            EXPECT_TRUE(holds(bak(), good));
            EXPECT_TRUE(fileContent(damaged()) == cut || fileContent(dat()) == cut) << "schedule lost";
        }));
}

} // namespace
