// Functions that the platform calls.
#pragma once

/// Stands before the definition of each. On this processor the platform keeps the stack aligned to 4 bytes
/// only, while the compiler counts on 16: objects would not stand where their types want them.
#define CALLED_BY_PLATFORM [[gnu::force_align_arg_pointer]]
