// Where the schedule is kept: `schedule.dat` in the Windows directory.
#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"

#include <cstdint>
#include <string>

namespace scheduler {

/// Empty when the platform does not tell where Windows is: a schedule is then neither loaded nor saved.
std::string schedulePath();

/// Writes the whole file. False when a step failed; a partly written file is left as it is.
[[nodiscard]] bool saveSchedule(const ScheduleList& list);

/// Fills the list from the file, as decodeSchedule does. A missing or empty file is a failure that leaves the
/// list as it is.
[[nodiscard]] bool loadSchedule(ScheduleList& list, std::uint32_t expectedMagic);

/// Told of what the user cannot see in the list.
class ScheduleFileListener {
public:
    virtual ~ScheduleFileListener() = default;

    /// The file exists but cannot be loaded: the schedule is empty.
    virtual void onLoadFailed(const std::string& path) = 0;

    /// A save failed, for the system's reason. Called once for consecutive failures.
    virtual void onSaveFailed(const std::string& path, const std::string& reason) = 0;
};

/// Loads and saves at schedulePath(), and keeps a safety copy beside it of what a save overwrites:
/// - `schedule.bak`: a schedule that this process loaded or wrote completely; while there is a
///   `schedule.damaged`, only one with entries;
/// - `schedule.damaged`: a file that could not be loaded. It replaces that of an earlier damage, which the
///   user has either dealt with or not missed.
/// The copies are for the user; no function reads them. A copy that fails does not stop the save.
class ScheduleFile : public ScheduleStore {
public:
    /// The listener outlives the object.
    explicit ScheduleFile(ScheduleFileListener& listener) : listener_(listener) {}

    /// As loadSchedule. A missing file is no failure.
    void load(ScheduleList& list);
    void save(const ScheduleList& list) override;

private:
    void keepPresent();
    void noteWhole(const ScheduleList& list);

    ScheduleFileListener& listener_;
    const char* copyExtension_ = nullptr; ///< of the copy to make before the next save; null: none
    bool failing_ = false;                ///< the last save failed and the listener knows
};

} // namespace scheduler
