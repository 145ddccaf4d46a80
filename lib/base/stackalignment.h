// The stack alignment of functions that the platform calls.
#pragma once

/// Goes before the definition of each such function. On this processor the platform aligns the stack to 4
/// bytes only, but the compiler relies on 16: without this, objects on the stack can be misaligned.
#define CALLED_BY_PLATFORM [[gnu::force_align_arg_pointer]]
