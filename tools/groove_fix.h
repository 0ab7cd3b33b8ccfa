// rwgroove fix: the few mends that turn a file the plug-in refuses into one
// it places, and nothing else. The drums move to channel 10, a time
// signature goes where there is none, a RIFF wrapper comes off, the damage
// the plug-in mends is mended; every other byte stays as it was. On request
// a played groove is written straight, as the plug-in places it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace rw::tools {

struct FixOptions {
  std::optional<int> drumsChannel;  // 1 to 16
  std::optional<int> numerator;     // with denominatorPower: the meter to add
  int denominatorPower = 2;
  bool straighten = false;  // a played groove written straight, as the plug-in places it
};

struct FixResult {
  bool fixed = false;  // `bytes` is a groove the plug-in places
  std::vector<uint8_t> bytes;
  std::vector<std::string> changes;  // what was done, for the user
  std::string refusal;               // why nothing can be written
};

FixResult FixGroove(std::span<const uint8_t> original, const FixOptions& options);

}  // namespace rw::tools
