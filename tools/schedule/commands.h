// The command line of schedule.exe.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum ExitCode : int { Succeeded = 0, Failed = 1, Misused = 2 };

/// Parses a whole word as an unsigned decimal number; nullopt if it is not a number or too large.
std::optional<unsigned> parseNumber(std::string_view word);

/// Runs the command that `words` contain. Returns an ExitCode and reports failures on standard error.
int runCommand(const std::vector<std::string>& words);
