#include "scheduler/ui/schedulerows.h"

#include "lib/base/strings.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

namespace scheduler {

ScheduleRows::ScheduleRows(ScheduleList& schedule, std::function<EngineState()> state,
                           const base::Clock& clock)
    : schedule_(schedule), state_(std::move(state)), clock_(clock) {
    ScheduleRows::onEntriesLoaded(schedule_.size());
    schedule_.addObserver(*this);
}

ScheduleRows::~ScheduleRows() {
    schedule_.removeObserver(*this);
}

std::string ScheduleRows::text(std::size_t row, ScheduleColumn column) const {
    return entryText(order_[row], column);
}

RowImage ScheduleRows::image(std::size_t row) const {
    const ScheduledProject& entry = schedule_[order_[row]];
    if (entry.running)
        return RowImage::Running;
    if (entry.disabled)
        return RowImage::Disabled;
    if (isWaiting(entry))
        return RowImage::Waiting;
    return entry.lastResult.empty() ? RowImage::None : RowImage::Result;
}

/// `waitingSince` is not enough: it stays set if the scheduler is suspended or the next run is moved later.
bool ScheduleRows::isWaiting(const ScheduledProject& entry) const {
    return entry.waitingSince != base::TimeValue() && !state_().suspended && clock_.now() >= entry.nextRun;
}

std::string ScheduleRows::line(std::size_t row) const {
    std::string line;
    for (std::size_t column = 0; column < columnCount; ++column) {
        const std::size_t begin = line.size();
        line += text(row, static_cast<ScheduleColumn>(column));
        const auto splitsCells = [](char c) { return c == '\t' || c == '\r' || c == '\n'; };
        std::ranges::replace_if(line.begin() + static_cast<std::ptrdiff_t>(begin), line.end(), splitsCells,
                                ' ');
        line += column + 1 < columnCount ? "\t" : "\r\n";
    }
    return line;
}

base::TimeValue ScheduleRows::textsValidUntil(std::size_t row, base::TimeValue now) const {
    return phrasesValidUntil(schedule_[order_[row]], now);
}

std::string ScheduleRows::entryText(std::size_t position, ScheduleColumn column) const {
    const ScheduledProject& entry = schedule_[position];
    switch (column) {
    case ScheduleColumn::Project:
        return displayName(entry);
    case ScheduleColumn::Schedule:
        return describeSchedule(entry, schedule_);
    case ScheduleColumn::Parameters:
        return describeRun(entry);
    case ScheduleColumn::NextRun:
        return describeNextRun(entry, schedule_, state_(), clock_);
    case ScheduleColumn::LastRun:
        return describeLastRun(entry, clock_);
    case ScheduleColumn::LastResult:
        return entry.lastResult;
    }
    return {};
}

void ScheduleRows::sortBy(ScheduleColumn column) {
    ascending_ = sortColumn_ != column || !ascending_;
    sortColumn_ = column;

    struct Row {
        std::string_view text;
        std::uint32_t position;
    };
    std::vector<std::string> texts;
    std::vector<Row> rows;
    texts.reserve(order_.size());
    rows.reserve(order_.size());
    for (std::uint32_t position = 0; position < order_.size(); ++position)
        rows.push_back({texts.emplace_back(entryText(position, column)), position});
    // `rows` is in the schedule's order, so a stable sort keeps equal texts in that order.
    if (ascending_)
        std::ranges::stable_sort(rows, std::less(), &Row::text);
    else
        std::ranges::stable_sort(rows, std::greater(), &Row::text);
    std::ranges::transform(rows, order_.begin(), &Row::position);
}

std::optional<std::size_t> ScheduleRows::findProject(std::string_view prefix, std::size_t start) const {
    for (std::size_t step = 0; step < size(); ++step) {
        const std::size_t row = (start + step) % size();
        if (base::startsWithNoCase(text(row, ScheduleColumn::Project), prefix))
            return row;
    }
    return std::nullopt;
}

void ScheduleRows::makeRoom(std::size_t count) {
    if (count > order_.capacity())
        order_.reserve(grownCapacity(count, sizeof(order_[0])));
}

void ScheduleRows::onEntryInserted(std::size_t position, bool appended) {
    if (!appended)
        for (std::uint32_t& other : order_)
            other += other >= position;
    order_.push_back(static_cast<std::uint32_t>(position));
}

void ScheduleRows::onEntriesLoaded(std::size_t count) {
    order_.resize(count);
    std::iota(order_.begin(), order_.end(), 0U);
    sortColumn_.reset();
}

void ScheduleRows::onEntriesRemoved(std::span<const std::size_t> positions) {
    // Must not allocate: a removal cannot be undone.
    const auto isRemoved = [&](std::size_t position) {
        return std::ranges::binary_search(positions, position, std::greater());
    };
    std::erase_if(order_, isRemoved);
    for (std::uint32_t& position : order_) {
        const auto below = std::ranges::lower_bound(positions, std::size_t{position}, std::greater());
        position -= static_cast<std::uint32_t>(positions.end() - below);
    }
}

void ScheduleRows::onCleared() {
    onEntriesLoaded(0);
}

} // namespace scheduler
