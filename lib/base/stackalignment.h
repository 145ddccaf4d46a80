#pragma once

/// Precedes the definition of each function that the platform calls. The platform aligns the stack to 4 bytes
/// only, but the compiler relies on 16, so objects on the stack would be misaligned.
#define CALLED_BY_PLATFORM [[gnu::force_align_arg_pointer]]
