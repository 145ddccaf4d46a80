#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"

#include <cstdint>
#include <string>

namespace scheduler {

/// `schedule.dat` in the Windows directory. Empty if that is unknown: nothing is then loaded or saved.
std::string schedulePath();

/// On failure the file can be incomplete.
[[nodiscard]] bool saveSchedule(const ScheduleList& list);

/// Like decodeSchedule. A missing or empty file is a failure that leaves `list` unchanged.
[[nodiscard]] bool loadSchedule(ScheduleList& list, std::uint32_t expectedMagic);

class ScheduleFileListener {
public:
    virtual ~ScheduleFileListener() = default;

    /// The file exists but cannot be loaded.
    virtual void onLoadFailed(const std::string& path) = 0;

    /// Called for the first of consecutive failures; `reason` is the system's error text.
    virtual void onSaveFailed(const std::string& path, const std::string& reason) = 0;
};

/// Loads and saves at schedulePath(). A save first copies the old file for the user, if possible, to
/// - `schedule.bak` if it was loaded or written completely and has entries
/// - `schedule.damaged` if it could not be loaded and is not empty
class ScheduleFile : public ScheduleStore {
public:
    /// The listener must outlive this object.
    explicit ScheduleFile(ScheduleFileListener& listener) : listener_(listener) {}

    /// Notifies the listener of a failure unless the file is missing.
    void load(ScheduleList& list);
    void save(const ScheduleList& list) override;

private:
    void copyBeforeSave();
    void chooseNextCopy(const ScheduleList& list);

    ScheduleFileListener& listener_;
    const char* copyExtension_ = nullptr; ///< for the copy to make before the next save; null: none
    bool failing_ = false;
};

} // namespace scheduler
