#include "scheduler/ui/schedulepage.h"

#include "resources/ids.h"
#include "scheduler/model/descriptions.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

namespace scheduler {
namespace {

constexpr framework::NumberRange delayMinutes{0, 1440};
constexpr framework::NumberRange minutesAfterTheHour{0, 59};
constexpr framework::NumberRange daysOfAMonth{1, 31};

// Indexed by kind. The controls of different kinds overlap.
constexpr struct KindControls {
    int button;
    std::initializer_list<int> controls;
} kindControls[] = {
    {IDC_KIND_AFTER_PROJECT, {IDC_AFTER_DELAY_LABEL, IDC_AFTER_DELAY, IDC_AFTER_DELAY_UNIT}},
    {IDC_KIND_STARTUP, {IDC_STARTUP_DELAY_LABEL, IDC_STARTUP_DELAY, IDC_STARTUP_DELAY_UNIT}},
    {IDC_KIND_HOURLY, {IDC_HOURLY_MINUTE_LABEL, IDC_HOURLY_MINUTE, IDC_HOURLY_MINUTE_UNIT}},
    {IDC_KIND_DAILY,
     {IDC_DAILY_TIME_LABEL, IDC_DAILY_TIME, IDC_DAILY_ON, IDC_MONDAY, IDC_TUESDAY, IDC_WEDNESDAY,
      IDC_THURSDAY, IDC_FRIDAY, IDC_SATURDAY, IDC_SUNDAY}},
    {IDC_KIND_MONTHLY, {IDC_MONTHLY_DAY_LABEL, IDC_MONTHLY_DAY, IDC_MONTHLY_TIME_LABEL, IDC_MONTHLY_TIME}},
    {IDC_KIND_ONCE, {IDC_ONCE_TIME_LABEL, IDC_ONCE_TIME}}};
static_assert(std::size(kindControls) == kindCount);

std::vector<int> kindButtons() {
    std::vector<int> buttons(kindCount);
    std::ranges::transform(kindControls, buttons.begin(), &KindControls::button);
    return buttons;
}

framework::ItemList projectsExcept(std::optional<std::size_t> position, const ScheduleList& schedule) {
    framework::ItemList items;
    for (std::size_t other = 0; other < schedule.size(); ++other)
        if (other != position)
            items.add({displayName(schedule[other]), static_cast<std::int32_t>(other)});
    return items;
}

/// Stores only if mayStore() and if the value changed: a time keeps seconds that its text does not show.
template<class Value>
class GuardedBinding final : public framework::FieldBinding<Value> {
public:
    using Binding = framework::FieldBinding<Value>;

    GuardedBinding(std::unique_ptr<Binding> binding, std::function<bool()> mayStore)
        : binding_(std::move(binding)), mayStore_(std::move(mayStore)) {}

    Value get() const override { return binding_->get(); }
    void set(const Value& value) override {
        if (mayStore_() && value != get())
            binding_->set(value);
    }

private:
    std::unique_ptr<Binding> binding_;
    std::function<bool()> mayStore_;
};

} // namespace

template<class Value>
std::unique_ptr<framework::FieldBinding<Value>>
SchedulePage::ofKind(ScheduleKind kind, std::unique_ptr<framework::FieldBinding<Value>> binding) {
    return std::make_unique<GuardedBinding<Value>>(std::move(binding),
                                                   [this, kind] { return isChosen(kind); });
}

// Three edits share `minutes` and three share `time`; only the edit of the selected kind stores its value.
SchedulePage::SchedulePage(ScheduledProject& record, const ScheduleList& schedule,
                           std::optional<std::size_t> position, const base::Clock& clock)
    : PropertyPage(IDD_SCHEDULE_PAGE),
      clock_(clock),
      otherProjects_(projectsExcept(position, schedule)),
      kind_(*this, kindButtons(),
            std::make_unique<GuardedBinding<std::int32_t>>(
                framework::bindNumber(record.kind),
                // An unknown kind is kept until the user selects another.
                [this] { return kind_.value() != framework::RadioGroup::noButton; })),
      afterProject_(*this, IDC_AFTER_PROJECT, otherProjects_, framework::bindNumber(record.afterIndex)),
      afterDelay_(*this, IDC_AFTER_DELAY, delayMinutes,
                  ofKind(ScheduleKind::AfterProject, framework::bindNumber(record.minutes))),
      startupDelay_(*this, IDC_STARTUP_DELAY, delayMinutes,
                    ofKind(ScheduleKind::AtStartup, framework::bindNumber(record.minutes))),
      hourlyMinute_(*this, IDC_HOURLY_MINUTE, minutesAfterTheHour,
                    ofKind(ScheduleKind::Hourly, framework::bindNumber(record.minutes))),
      dailyTime_(*this, IDC_DAILY_TIME, ofKind(ScheduleKind::Daily, framework::bindTimeOfDay(record.time)),
                 clock),
      weekdays_{{{*this, IDC_MONDAY, framework::bindFlag(record.weekdays[0])},
                 {*this, IDC_TUESDAY, framework::bindFlag(record.weekdays[1])},
                 {*this, IDC_WEDNESDAY, framework::bindFlag(record.weekdays[2])},
                 {*this, IDC_THURSDAY, framework::bindFlag(record.weekdays[3])},
                 {*this, IDC_FRIDAY, framework::bindFlag(record.weekdays[4])},
                 {*this, IDC_SATURDAY, framework::bindFlag(record.weekdays[5])},
                 {*this, IDC_SUNDAY, framework::bindFlag(record.weekdays[6])}}},
      monthlyDay_(*this, IDC_MONTHLY_DAY, daysOfAMonth, framework::bindNumber(record.dayOfMonth)),
      monthlyTime_(*this, IDC_MONTHLY_TIME,
                   ofKind(ScheduleKind::Monthly, framework::bindTimeOfDay(record.time)), clock),
      onceTime_(*this, IDC_ONCE_TIME, ofKind(ScheduleKind::Once, framework::bindDateTime(record.time))) {}

void SchedulePage::load() {
    PropertyPage::load();
    wasOnce_ = isChosen(ScheduleKind::Once);
    offerFutureTime();
    if (afterProject_.selected() != framework::ListControl::noItem || afterProject_.count() == 0)
        return;
    // The stored position is that of a removed project or of this entry.
    afterProject_.select(0);
    afterProject_.store();
}

bool SchedulePage::isChosen(ScheduleKind kind) const {
    return kind_.value() == static_cast<std::int32_t>(kind);
}

bool SchedulePage::hasWeekday() const {
    return std::ranges::any_of(weekdays_, &framework::CheckBox::isChecked);
}

bool SchedulePage::check() {
    if (isChosen(ScheduleKind::Daily) && !hasWeekday()) {
        weekdays_.front().reportInvalid("You must choose at least one day of the week.");
        return false;
    }
    return PropertyPage::check();
}

void SchedulePage::updateState() {
    afterProject_.setEnabled(isChosen(ScheduleKind::AfterProject));
    enableItem(IDC_KIND_AFTER_PROJECT, afterProject_.count() > 0);
    kind_.keepTabStop();

    const auto chosen = static_cast<std::size_t>(kind_.value()); // out of range if no button is checked
    const auto show = [this](std::size_t kind, bool visible) {
        for (const int id : kindControls[kind].controls) {
            showItem(id, visible);
            enableItem(id, visible);
        }
    };
    // Hide the others first, so that they do not show through.
    for (std::size_t kind = 0; kind < std::size(kindControls); ++kind)
        if (kind != chosen)
            show(kind, false);
    if (chosen < std::size(kindControls))
        show(chosen, true);
}

void SchedulePage::onIdle() {
    PropertyPage::onIdle();
    offerFutureTime();
}

void SchedulePage::offerFutureTime() {
    // Also if "just once" was selected after the last pass. That pass may have been long ago.
    const bool isOnce = isChosen(ScheduleKind::Once);
    const bool isBeingEdited = isOnce && wasOnce_;
    wasOnce_ = isOnce;
    const base::TimeValue now = clock_.now();
    if (!isBeingEdited && onceTime_.time() < now)
        onceTime_.setTime(now + base::TimeSpan::fromMinutes(1));
}

} // namespace scheduler
