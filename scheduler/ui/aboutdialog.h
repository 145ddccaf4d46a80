#pragma once

#include "resources/ids.h"
#include "scheduler/ui/framework/dialog.h"

namespace scheduler {

class AboutDialog : public framework::Dialog {
public:
    AboutDialog() : Dialog(IDD_ABOUT) {}
};

} // namespace scheduler
