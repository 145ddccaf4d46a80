// The expressions that several parts of the program use. Built before the entry point runs and only read
// afterwards, so every thread may use them.
#pragma once

#include "lib/base/regexp.h"

namespace base {

extern const Expression whitespaceRun; ///< cuts text at runs of white space
extern const Expression lineBreak;     ///< cuts text into lines, with or without carriage returns
extern const Expression commandToken;  ///< matches a command line's words, a quoted text being one word

} // namespace base
