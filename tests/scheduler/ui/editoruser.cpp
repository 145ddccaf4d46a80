#include "tests/scheduler/ui/editoruser.h"

#include "scheduler/run/dialupconnector.h"
#include "scheduler/ui/framework/filedialog.h"

bool framework::openFileDialog(OPENFILENAMEA& request) {
    return test::browseDialog(request);
}

DWORD framework::fileDialogError() {
    return 0;
}

namespace scheduler {

DialupConnector::DialupConnector(HMODULE, const FindEntryPoint&)
    : available_(true), entries_({"Home", "Office line"}) {}

const DialupConnector& DialupConnector::instance() {
    ++test::phoneBookQueries;
    static const DialupConnector connector(nullptr, nullptr);
    return connector;
}

} // namespace scheduler
