// Schedule kinds and their controls on the Schedule page.
#pragma once

#include "resources/ids.h"
#include "scheduler/model/scheduledproject.h"

#include <array>
#include <cstddef>
#include <vector>

namespace test {

inline constexpr auto allKinds = [] {
    std::array<scheduler::ScheduleKind, scheduler::kindCount> kinds{};
    int number = 0;
    for (scheduler::ScheduleKind& kind : kinds)
        kind = static_cast<scheduler::ScheduleKind>(number++);
    return kinds;
}();

inline constexpr auto unknownKind = static_cast<scheduler::ScheduleKind>(scheduler::kindCount);

struct KindControls {
    int button = 0;
    std::vector<int> fields; ///< in tab order
    std::vector<int> texts;
};

/// The controls of one kind. The button and IDC_AFTER_PROJECT are always visible.
constexpr KindControls controlsOf(scheduler::ScheduleKind kind) {
    switch (kind) {
    case scheduler::ScheduleKind::AfterProject:
        return {IDC_KIND_AFTER_PROJECT,
                {IDC_AFTER_PROJECT, IDC_AFTER_DELAY},
                {IDC_AFTER_DELAY_LABEL, IDC_AFTER_DELAY_UNIT}};
    case scheduler::ScheduleKind::AtStartup:
        return {IDC_KIND_STARTUP, {IDC_STARTUP_DELAY}, {IDC_STARTUP_DELAY_LABEL, IDC_STARTUP_DELAY_UNIT}};
    case scheduler::ScheduleKind::Hourly:
        return {IDC_KIND_HOURLY, {IDC_HOURLY_MINUTE}, {IDC_HOURLY_MINUTE_LABEL, IDC_HOURLY_MINUTE_UNIT}};
    case scheduler::ScheduleKind::Daily:
        return {IDC_KIND_DAILY,
                {IDC_DAILY_TIME, IDC_MONDAY, IDC_TUESDAY, IDC_WEDNESDAY, IDC_THURSDAY, IDC_FRIDAY,
                 IDC_SATURDAY, IDC_SUNDAY},
                {IDC_DAILY_TIME_LABEL, IDC_DAILY_ON}};
    case scheduler::ScheduleKind::Monthly:
        return {IDC_KIND_MONTHLY,
                {IDC_MONTHLY_DAY, IDC_MONTHLY_TIME},
                {IDC_MONTHLY_DAY_LABEL, IDC_MONTHLY_TIME_LABEL}};
    case scheduler::ScheduleKind::Once:
        return {IDC_KIND_ONCE, {IDC_ONCE_TIME}, {IDC_ONCE_TIME_LABEL}};
    }
    return {};
}

constexpr int buttonOf(scheduler::ScheduleKind kind) {
    return controlsOf(kind).button;
}
static_assert(buttonOf(allKinds.back()) != 0 && buttonOf(unknownKind) == 0, "kindCount is wrong");

inline std::vector<int> shownOnlyWith(scheduler::ScheduleKind kind) {
    auto [button, controls, texts] = controlsOf(kind);
    std::erase(controls, IDC_AFTER_PROJECT);
    controls.insert(controls.end(), texts.begin(), texts.end());
    return controls;
}

} // namespace test
