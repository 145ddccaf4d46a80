#include "scheduler/model/schedulefile.h"

#include "lib/base/files.h"
#include "lib/base/formatting.h"
#include "scheduler/model/schedulecodec.h"

#include <new>

namespace scheduler {

std::string schedulePath() {
    const std::string directory = base::windowsDirectory();
    // A bare name would be that of a file in the current folder, whatever folder that is. An empty one can be
    // neither opened nor made.
    return directory.empty() ? std::string() : base::format("%sschedule.dat", directory);
}

bool saveSchedule(const ScheduleList& list) {
    try {
        return base::writeFile(schedulePath(), encodeSchedule(list.entries()));
    } catch (const std::bad_alloc&) {
        return false; // before the file was opened: it still holds the last schedule
    }
}

bool loadSchedule(ScheduleList& list, std::uint32_t expectedMagic) {
    base::MappedFile file;
    return file.open(schedulePath()) && decodeSchedule(file.bytes(), expectedMagic, list);
}

} // namespace scheduler
