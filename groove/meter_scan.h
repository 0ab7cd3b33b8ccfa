// A groove's meter from the first bytes of its file, without loading it.
//
// The dialog offers only the styles whose meter fits the selected measures,
// and a groove folder may hold ten thousand files, so it cannot load each
// one. The meter lies at the start of a file: the header's division and the
// time signatures at tick 0 of the first track. The scan reads exactly
// those, by the reader's own byte rules (its SysEx skip, running status,
// what it takes for a status byte, how it grows a chunk, where it reads
// zeros past the end and how many diagnostics it stands), and stops at the
// first event after tick 0 or at the end of the first track: what it
// answers is the meter the reader would reach, on every file the reader
// loads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>

#include "groove_pattern.h"

namespace rw::groove {

// Enough for the header and the first track's opening events of any
// ordinary groove.
inline constexpr std::size_t kMeterScanPrefix = 4096;

enum class MeterScanOutcome : uint8_t {
  kMeter,    // the reader's meter
  kUnknown,  // the bytes given end before the meter is settled: read more
  kNone,     // the reader would refuse the file before it gives a meter
};

struct MeterScan {
  MeterScanOutcome outcome = MeterScanOutcome::kUnknown;
  // For kMeter: `division` and the time signature's numerator, denominator,
  // ticks per beat and ticks per measure, as the reader's snapshot holds
  // them; enough for MeterFits. Nothing else is filled (it is no load).
  GroovePattern pattern;
  // For kUnknown: the scan goes on only with at least this many bytes.
  uint64_t wanted = 0;
};

// `prefix` is the start of a file of `fileSize` bytes (all of it when the
// sizes are equal); past the file's end the scan reads as the reader does.
MeterScan ScanMeter(std::span<const uint8_t> prefix, uint64_t fileSize);

// Reads an open file from its start, kMeterScanPrefix bytes first and more
// only while the scan wants them. A file that cannot be read, is empty or
// is larger than the plug-in reads has no meter.
MeterScan ScanMeterOfFile(std::FILE* file);

}  // namespace rw::groove
