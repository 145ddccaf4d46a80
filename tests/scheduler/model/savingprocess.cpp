// Saves schedules and ends at system call CALL of the last save. usage: savingprocess CALL (NAME COUNT)...

#include "scheduler/model/schedulefile.h"
#include "tests/scheduler/model/namedschedule.h"
#include "tests/scheduler/model/systemcalls.h"

#include <cstdlib>

namespace {

class NoListener : public scheduler::ScheduleFileListener {
    void onLoadFailed(const std::string&) override {}
    void onSaveFailed(const std::string&, const std::string&) override { std::exit(2); }
};

} // namespace

int main(int count, char** arguments) {
    NoListener listener;
    scheduler::ScheduleFile file(listener);
    scheduler::ScheduleList list;
    file.load(list);
    for (int i = 2; i + 1 < count; i += 2) {
        list.assign(test::entriesOf(arguments[i], std::strtoul(arguments[i + 1], nullptr, 10)));
        if (i + 3 >= count)
            test::endAtSystemCall(std::strtoul(arguments[1], nullptr, 10));
        file.save(list);
    }
}
