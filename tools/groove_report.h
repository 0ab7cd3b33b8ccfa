// One run of the plug-in's groove reader over a file, and its reports.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "groove_pattern.h"

namespace rw::tools {

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
  std::vector<uint8_t> filtered;  // the buffer's bytes as the reader left them
  bool drumTrackLacksMeter = false;  // a separate drum track without a time signature
};

// Runs the reader over a copy of `file` in a buffer of twice its size.
GrooveInspection InspectGroove(const std::vector<uint8_t>& file);

std::string JsonReport(const GrooveInspection& inspection);
std::string TextReport(const std::string& name, const GrooveInspection& inspection);

}  // namespace rw::tools
