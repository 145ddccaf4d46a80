#include "tools/schedule/storedschedule.h"

#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"

#include <fstream>
#include <span>
#include <sstream>
#include <string>

bool readStoredSchedule(scheduler::ScheduleList& list) {
    // Not loadSchedule(): it locks writers out, so a save by the running scheduler would fail.
    std::ifstream file(scheduler::schedulePath(), std::ios::binary);
    std::ostringstream copy;
    copy << file.rdbuf();
    const std::string content = copy.str();
    return scheduler::decodeSchedule(std::as_bytes(std::span(content)), scheduler::scheduleMagic, list);
}
