// A dialog of several pages, run modally.
#pragma once

#include "scheduler/ui/framework/modalowner.h"
#include "scheduler/ui/framework/propertypage.h"
#include "scheduler/ui/framework/window.h"

#include <string>
#include <vector>

namespace framework {

/// Not named after the platform's function alone, whose name is a macro.
class PropertySheetDialog : public Window {
public:
    ~PropertySheetDialog() override;

    /// Appends a page, which has to outlive the run.
    void add(PropertyPage& page) { pages_.push_back(&page); }

    /// Shows the sheet and runs it until it ends: IDOK when all pages passed their checks and were stored,
    /// notMade when it or a page could not be made, else IDCANCEL. The owner is disabled meanwhile, and the
    /// sheet is gone afterwards.
    int run(const std::string& title, HWND owner);

    void onIdle() override;
    bool preTranslate(MSG& message) override;
    bool isModalFinished() const override;

protected:
    Handled onMessage(const Message& message) override;

private:
    [[nodiscard]] bool open(const std::string& title, HWND owner);
    void takeOver(HWND sheet);

    /// Has each page created by turning to it. Wine 8 does not create them with the sheet: it ignores
    /// PSP_PREMATURE.
    void createPages();

    void fitToPages();
    void close();

    std::vector<PropertyPage*> pages_;
};

} // namespace framework
