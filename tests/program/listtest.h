// What the tests of the program's list share.
#pragma once

#include "tests/program/listdriver.h"
#include "tests/program/programtest.h"

#include <memory>
#include <vector>

namespace driver {

/// The list of a running copy.
class ListTest : public ProgramTest {
protected:
    void startWith(const std::vector<scheduler::ScheduledProject>& entries) {
        saveEntries(entries);
        ASSERT_TRUE(scheduler_.start());
        list_ = std::make_unique<ListDriver>(scheduler_.window());
    }

    void exitAndStart() {
        ASSERT_NO_FATAL_FAILURE(restart());
        list_ = std::make_unique<ListDriver>(scheduler_.window());
    }

    const ListDriver& list() const { return *list_; }

private:
    std::unique_ptr<ListDriver> list_;
};

} // namespace driver
