#include "scheduler/model/schedulefile.h"

#include "lib/base/files.h"
#include "lib/base/formatting.h"
#include "scheduler/model/schedulecodec.h"

#include <new>
#include <span>
#include <vector>

namespace scheduler {
namespace {

// Large enough for the platform's calls not to count, small enough to stay in the processor's cache.
constexpr std::size_t writtenAtOnce = 128 * 1024;

} // namespace

std::string schedulePath() {
    const std::string directory = base::windowsDirectory();
    // A bare name would be that of a file in the current folder, whatever folder that is. An empty one can be
    // neither opened nor made.
    return directory.empty() ? std::string() : base::format("%sschedule.dat", directory);
}

bool saveSchedule(const ScheduleList& list) {
    try {
        // Taken before the file is opened: should there be no memory, the file still holds the last schedule.
        std::vector<std::byte> buffer(writtenAtOnce);
        base::WrittenFile file(schedulePath());
        const bool written = encodeSchedule(
            list.entries(), buffer, [&file](std::span<const std::byte> piece) { return file.write(piece); });
        return file.close() && written;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void ScheduleFile::save(const ScheduleList& list) {
    // Ignored: nobody is told yet that a save failed.
    static_cast<void>(saveSchedule(list));
}

bool loadSchedule(ScheduleList& list, std::uint32_t expectedMagic) {
    base::MappedFile file;
    return file.open(schedulePath()) && decodeSchedule(file.bytes(), expectedMagic, list);
}

} // namespace scheduler
