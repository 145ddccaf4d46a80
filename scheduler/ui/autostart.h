// The value by which the system starts the program at log-on.
#pragma once

namespace scheduler {

/// Writes the value, the quoted path of the program and "/s", or deletes it. A refusal of the registry, as a
/// limited user may meet, is ignored.
void applyAutostart(bool wanted);

} // namespace scheduler
