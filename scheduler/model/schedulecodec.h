// Format of the schedule file. Integers are little-endian and unaligned:
//   u32 magic 0x0046C71C, u32 record count, records.
// A record is the fields of ScheduledProject in order. A string is a u32 byte count and its ANSI bytes; an
// enumeration, a number or a time has 4 bytes, a flag 1 byte, the weekdays 7 bytes. A record with empty
// strings has 82 bytes. Data after the last record is ignored.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace scheduler {

inline constexpr std::uint32_t scheduleMagic = 0x0046C71C;

/// Receives the content piece by piece. Returning false stops the encoding.
using ContentSink = std::function<bool(std::span<const std::byte>)>;

/// Passes the file's content to `sink` in pieces that fit into `buffer` (at least 8 bytes). A record that
/// exceeds the buffer is passed field by field. False if the sink returned false.
[[nodiscard]] bool encodeSchedule(std::span<const ScheduledProject> entries, std::span<std::byte> buffer,
                                  const ContentSink& sink);

/// Fills `list` from a file's content. A damaged count causes no large allocation.
/// - False, `list` unchanged: fewer than 8 bytes, or a magic other than `expectedMagic` (0: any).
/// - False, `list` empty: a count of at least the content's size, a truncated record, or out of memory.
[[nodiscard]] bool decodeSchedule(std::span<const std::byte> content, std::uint32_t expectedMagic,
                                  ScheduleList& list);

} // namespace scheduler
