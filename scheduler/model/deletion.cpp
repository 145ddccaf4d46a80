#include "scheduler/model/deletion.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <ranges>
#include <utility>

namespace scheduler {
namespace {

/// What becomes of references to entries while some entries are deleted one after the other, from the highest
/// position to the lowest, so that those still to be deleted are where they were. Each deletion changes all
/// references: one to the deleted entry becomes one to that entry's own predecessor, one to an entry behind
/// it moves down by one. This tells the outcome for one reference without going through all deletions.
class Deletions {
public:
    /// `positions` descend.
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

    /// The value of the reference `before` after all deletions.
    std::int32_t afterAll(std::int32_t before) const { return after(before, 0, stepCount()); }

private:
    std::int32_t stepCount() const { return static_cast<std::int32_t>(positions_.size()); }

    /// What a reference that is `index` before the deletion numbered `step` is before the one numbered `end`.
    std::int32_t after(std::int32_t index, std::int32_t step, std::int32_t end) const {
        while (step < end && index >= 0) {
            // One that lies further out comes to the same as one just beyond the end.
            index = std::min(index, count_ + 1 - step);
            // Those behind it do not touch it, and all those before it move it down.
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

    /// Where each deleted entry's predecessor stands after its deletion.
    void findPredecessors(const ScheduleList& list) {
        for (std::int32_t step = 0; step < stepCount(); ++step) {
            const std::int32_t position = positions_[at(step)];
            const std::int32_t followed = after(list[at(position)].afterIndex, 0, step);
            predecessors_.push_back(position <= followed && followed != 0 ? followed - 1 : followed);
        }
    }

    static std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

    std::vector<std::int32_t> positions_;
    std::vector<std::int32_t> reachedAt_;    ///< per index: the first deletion at or before it
    std::vector<std::int32_t> predecessors_; ///< per deletion
    std::int32_t count_;                     ///< of the entries before the first deletion
};

/// An entry that follows itself would never run: it runs at start-up.
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
    list.noteChange();
}

} // namespace scheduler
