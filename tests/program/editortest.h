// What the tests of adding in the program's editor share.
#pragma once

#include "tests/program/editordriver.h"
#include "tests/program/programtest.h"

namespace driver {

/// The editor of a running copy, open for a third entry. The two that are there never run by themselves.
class AddInEditor : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        saveEntries({sleeping("C:\\Sites\\news.kra"), sleeping("C:\\Sites\\archive.kra")});
        ASSERT_TRUE(scheduler_.start());
        ASSERT_TRUE(editor_.openAdd());
    }

    bool focusGoesTo(int id) const {
        return waitUntil([&] { return editor_.focused() == id; });
    }
    /// As the Tab key or the mouse would, from wherever it is.
    void moveFocusTo(int id) const {
        PostMessageA(editor_.sheet(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(editor_.item(id)), TRUE);
        ASSERT_TRUE(focusGoesTo(id));
    }

    /// The third entry as it is saved by OK.
    scheduler::ScheduledProject addedByOk() const {
        const auto saved = editor_.saveByOk();
        EXPECT_EQ(saved.size(), 3U);
        return saved.size() == 3 ? saved[2] : scheduler::ScheduledProject();
    }

    EditorDriver editor_{scheduler_};
};

} // namespace driver
