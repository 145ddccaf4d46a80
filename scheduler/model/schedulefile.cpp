#include "scheduler/model/schedulefile.h"

#include "lib/base/files.h"
#include "lib/base/opsys.h"
#include "scheduler/model/schedulecodec.h"

#include <new>
#include <span>
#include <utility>
#include <vector>

namespace scheduler {
namespace {

// Large enough that the number of system calls does not matter, small enough for the processor's cache.
constexpr std::size_t bufferSize = 128 * 1024;

std::string pathWith(const char* extension) {
    std::string path = base::windowsDirectory();
    // If the folder is unknown, the path stays empty and cannot be opened. The name alone would be relative.
    if (!path.empty())
        path.append("schedule.").append(extension);
    return path;
}

struct Written {
    bool begun = false;      ///< the file was opened and thereby truncated
    std::uint32_t error = 0; ///< the system's error code; 0: the file is complete
};

Written writeSchedule(const ScheduleList& list) {
    Written written;
    try {
        // Allocated before the file is opened: if this fails, the file keeps the last schedule.
        std::vector<std::byte> buffer(bufferSize);
        base::OutputFile file(schedulePath());
        written.begun = file.isOpen();
        static_cast<void>(encodeSchedule(
            list.entries(), buffer, [&file](std::span<const std::byte> piece) { return file.write(piece); }));
        static_cast<void>(file.close());
        written.error = file.error();
    } catch (const std::bad_alloc&) {
        written.error = ERROR_NOT_ENOUGH_MEMORY;
    }
    return written;
}

} // namespace

std::string schedulePath() {
    return pathWith("dat");
}

bool saveSchedule(const ScheduleList& list) {
    return writeSchedule(list).error == 0;
}

bool loadSchedule(ScheduleList& list, std::uint32_t expectedMagic) {
    base::MappedFile file;
    return file.open(schedulePath()) && decodeSchedule(file.bytes(), expectedMagic, list);
}

void ScheduleFile::load(ScheduleList& list) {
    if (loadSchedule(list, scheduleMagic))
        return chooseNextCopy(list);
    copyExtension_ = "damaged";
    const std::string path = schedulePath();
    if (base::fileExists(path))
        listener_.onLoadFailed(path);
}

void ScheduleFile::save(const ScheduleList& list) {
    copyBeforeSave();
    const Written written = writeSchedule(list);
    if (written.error == 0) {
        failing_ = false;
        return chooseNextCopy(list);
    }
    if (written.begun)
        copyExtension_ = nullptr; // a copy of the incomplete file would replace a complete one
    if (std::exchange(failing_, true))
        return;
    try {
        listener_.onSaveFailed(schedulePath(), base::systemErrorText(written.error));
    } catch (const std::bad_alloc&) {
        failing_ = false; // so that the next failure is reported
    }
}

void ScheduleFile::copyBeforeSave() {
    if (!copyExtension_)
        return;
    try {
        if (base::copyOver(schedulePath(), pathWith(copyExtension_)))
            copyExtension_ = nullptr;
    } catch (const std::bad_alloc&) {
        return; // save without a copy
    }
}

void ScheduleFile::chooseNextCopy(const ScheduleList& list) {
    // An empty list must not replace `schedule.bak`: after loading a damaged file, the program may save one.
    copyExtension_ = list.empty() ? nullptr : "bak";
}

} // namespace scheduler
