#include "scheduler/model/deletion.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <ranges>
#include <utility>

namespace scheduler {
namespace {

/// Computes what references (afterIndex) become if entries are deleted one by one, from the highest position
/// to the lowest. Each deletion replaces references to the deleted entry by references to its predecessor,
/// the entry that it followed, and lowers references to later entries by one.
class Deletions {
public:
    /// `positions` must be in descending order.
    Deletions(const ScheduleList& list, const std::vector<std::size_t>& positions)
        : positions_(positions.begin(), positions.end()),
          reachedAt_(list.size()),
          count_(static_cast<std::int32_t>(list.size())) {
        std::int32_t step = 0;
        for (std::int32_t index = count_ - 1; index >= 0; --index) {
            reachedAt_[at(index)] = step;
            step += step < stepCount() && positions_[at(step)] == index;
        }
        findPredecessors(list);
    }

    std::int32_t afterAll(std::int32_t before) const { return after(before, 0, stepCount()); }

private:
    std::int32_t stepCount() const { return static_cast<std::int32_t>(positions_.size()); }

    /// Maps the reference `index`, valid before deletion number `step`, to its value before deletion `end`.
    std::int32_t after(std::int32_t index, std::int32_t step, std::int32_t end) const {
        while (step < end && index >= 0) {
            // A deletion lowers a reference beyond the end to at most the entry count before the deletion.
            index = std::min(index, count_ + 1 - step);
            // Skips deletions at higher positions, because they do not change the reference.
            if (index <= positions_[at(step)])
                step = reachedAt_[at(index)];
            if (step >= end)
                break;
            if (index != positions_[at(step)])
                return index - (end - step);
            index = predecessors_[at(step)];
            ++step;
        }
        return index;
    }

    /// Stores, for each deleted entry, the position of its predecessor after the deletion.
    void findPredecessors(const ScheduleList& list) {
        for (std::int32_t step = 0; step < stepCount(); ++step) {
            const std::int32_t position = positions_[at(step)];
            const std::int32_t followed = after(list[at(position)].afterIndex, 0, step);
            predecessors_.push_back(position <= followed && followed != 0 ? followed - 1 : followed);
        }
    }

    static std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

    std::vector<std::int32_t> positions_;
    std::vector<std::int32_t> reachedAt_;    ///< per index: the first deletion at or below this index
    std::vector<std::int32_t> predecessors_; ///< per deletion: see findPredecessors
    std::int32_t count_;                     ///< number of entries before the first deletion
};

/// An entry that follows itself would never run. It runs at start-up instead.
void breakSelfReference(ScheduledProject& entry, std::size_t position) {
    if (entry.kind == ScheduleKind::AfterProject && std::cmp_equal(entry.afterIndex, position))
        entry.kind = ScheduleKind::AtStartup;
}

} // namespace

void deleteEntries(ScheduleList& list, std::vector<std::size_t> positions) {
    if (positions.empty())
        return;
    std::ranges::sort(positions, std::greater());
    const Deletions deletions(list, positions);
    const ScheduleBatch batch(list);
    list.removeAll(positions);
    // A self-reference survives further deletions, so one check at the end suffices.
    for (std::size_t position = 0; position < list.size(); ++position) {
        ScheduledProject& entry = list[position];
        entry.afterIndex = deletions.afterAll(entry.afterIndex);
        breakSelfReference(entry, position);
    }
    list.notifyChanged();
}

} // namespace scheduler
