#include "benches/program/marking.h"

#include "lib/base/registry.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/scheduledriver.h"

#include <windows.h>

namespace bench {

MarkingSpider::MarkingSpider() : folder_(driver::makeTestFolder()) {
    const std::string program = driver::buildFolder() + "benches\\program\\markspider.exe";
    base::writeString(HKEY_CLASSES_ROOT, ".kra\\", "Corvane.Project.kra");
    base::writeString(HKEY_CLASSES_ROOT, "Corvane.Project.kra\\shell\\open\\command\\",
                      '"' + program + "\" \"%1\"");
}

scheduler::ScheduledProject MarkingSpider::makeEntry(int number, base::TimeValue due) const {
    scheduler::ScheduledProject entry;
    entry.path = folder_ + std::to_string(number) + ".kra";
    entry.kind = scheduler::ScheduleKind::Once;
    entry.time = due;
    driver::writeText(entry.path, "");
    return entry;
}

void saveEntries(const std::vector<scheduler::ScheduledProject>& entries) {
    driver::saveEntries(entries);
}

Moment savedAt() {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExA(scheduler::schedulePath().c_str(), GetFileExInfoStandard, &data);
    return static_cast<Moment>(
        ULARGE_INTEGER{{data.ftLastWriteTime.dwLowDateTime, data.ftLastWriteTime.dwHighDateTime}}.QuadPart);
}

} // namespace bench
