// One run of the plug-in's groove reader over a file, and its reports.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "groove_pattern.h"

namespace rw::tools {

// A groove file read whole into a buffer of twice its size, as the plug-in
// reads it; the reader filters it in place.
struct GrooveFile {
  std::unique_ptr<uint8_t[]> buffer;
  uint64_t size = 0;
  uint64_t capacity = 0;
};

struct GrooveInspection {
  bool loaded = false;
  bool rangeCheckFailure = false;
  std::vector<std::string> alerts;
  int32_t format = 0;
  int32_t tracks = 0;
  groove::GroovePattern pattern;
  double tempoBpm = 0.0;
  int32_t grooveMeasures = 0;
  std::vector<int> keysUsed;
  int32_t lowestKey = 127;
  int32_t highestKey = 0;
  uint64_t filteredSize = 0;         // bytes the reader left in the buffer
  bool drumTrackLacksMeter = false;  // a separate drum track without a time signature
};

// Runs the reader over the file; afterwards the buffer holds the filtered
// file and `file.size` its size.
GrooveInspection InspectGroove(GrooveFile& file);

std::string JsonReport(const GrooveInspection& inspection);
std::string TextReport(const std::string& name, const GrooveInspection& inspection);

}  // namespace rw::tools
