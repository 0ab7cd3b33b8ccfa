// staff_picture: the drum grid of the staff that received a groove, drawn
// from a cantel-host result with the same renderer as `rwgroove render`, so
// that the demo shows what landed in the score as a picture.
//
//   staff_picture RESULT.json -o OUT.svg [--title TEXT]
//
// Exit status: 0 written, 1 nothing was placed, 2 usage or I/O error.
#include <cantel/cx_frame.h>

#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

#include "drum_grid.h"
#include "groove_file.h"

namespace {

using Json = nlohmann::json;
using rw::tools::DrumGrid;

constexpr int64_t kWholeNote = 4096;  // a quarter is 1024
constexpr int64_t kDrumSetClef = 12;

int64_t Int(const Json& value, const char* key) {
  return value.contains(key) && value[key].is_number() ? value[key].get<int64_t>() : 0;
}

// What the markers' texts show: their font commands ("^font(...)") left out.
std::string VisibleText(std::string text) {
  while (!text.empty() && text[0] == '^') {
    const std::size_t close = text.find(')');
    if (close == std::string::npos) break;
    text.erase(0, close + 1);
  }
  return text;
}

std::string MeterName(int64_t beats, int64_t beatDuration) {
  if (beatDuration > 0 && (beatDuration & (beatDuration - 1)) == 0) {
    return std::to_string(beats) + "/" + std::to_string(kWholeNote / beatDuration);
  }
  if (beatDuration > 0 && beatDuration % 3 == 0) {
    return std::to_string(beats * 3) + "/" + std::to_string(kWholeNote / (beatDuration / 3)) +
           " in " + std::to_string(beats) + " dotted beats";
  }
  return std::to_string(beats) + " beats of " + std::to_string(beatDuration);
}

bool IsSlashStyle(const Json& score, int64_t style) {
  for (const Json& s : score.value("staff_styles", Json::array())) {
    if (Int(s, "number") != style) continue;
    std::string name;
    for (const Json& word : s.value("words", Json::array())) {
      const int64_t w = word.get<int64_t>();
      if (w >= 32 && w < 127) name += static_cast<char>(w);
    }
    return name.find("Slash") != std::string::npos;
  }
  return false;
}

std::string Markers(const Json& score, int64_t staff, int64_t measure) {
  std::string out;
  for (const Json& a : score.value("expression_assignments", Json::array())) {
    if (Int(a, "staff") != staff || Int(a, "measure") != measure) continue;
    for (const Json& e : score.value("expressions", Json::array())) {
      if (Int(e, "number") == Int(a, "definition") && e["text"].is_string()) {
        out += (out.empty() ? "" : " ") + VisibleText(e["text"].get<std::string>());
      }
    }
  }
  return out;
}

// How the staff writes what it received: the three notation styles differ
// here, not in the notes.
std::string Writing(const Json& score, const Json& staff, int64_t first) {
  for (const Json& a : score.value("staff_style_assignments", Json::array())) {
    if (Int(a, "number") == Int(staff, "staff") && IsSlashStyle(score, Int(a, "style"))) {
      return "shown as beat slashes";
    }
  }
  if (!staff.value("percussion_notation", Json()).is_null()) {
    return "written with the percussion map";
  }
  const Json& clefs = staff.value("clefs", Json::array());
  const auto index = static_cast<std::size_t>(first - 1);
  const int64_t clef = index < clefs.size() ? clefs[index].get<int64_t>() : -1;
  return clef == kDrumSetClef ? "written as notes on the drum-set clef"
                              : "written as notes on clef " + std::to_string(clef);
}

std::optional<DrumGrid> StaffGrid(const Json& result, const std::string& title) {
  const Json& imports = result.value("imports", Json::array());
  if (imports.empty()) return std::nullopt;
  const Json& score = result["score"];
  const int64_t slot = Int(imports[0]["region"], "start_slot");
  int64_t first = INT64_MAX, last = 0;
  for (const Json& i : imports) {
    first = std::min(first, Int(i["region"], "start_measure"));
    last = std::max(last, Int(i["region"], "end_measure"));
  }
  const Json* staff = nullptr;
  for (const Json& s : score["staves"]) {
    if (Int(s, "slot") == slot) staff = &s;
  }
  if (!staff || last < first) return std::nullopt;
  int64_t beats = 0, beatDuration = 0;
  for (const Json& m : score["measures"]) {
    if (Int(m, "number") == first) {
      beats = Int(m, "beats");
      beatDuration = Int(m, "beat_duration");
    }
  }
  if (beats <= 0 || beatDuration <= 0) return std::nullopt;

  DrumGrid grid;
  const int64_t number = Int(*staff, "staff");
  grid.unitsPerQuarter = 1024;
  grid.unitsPerBeat = uint64_t(beatDuration);
  grid.unitsPerMeasure = uint64_t(beats * beatDuration);
  grid.firstMeasure = static_cast<int32_t>(first);
  grid.measures = static_cast<int32_t>(last - first + 1);
  for (const Json& e : staff->value("entries", Json::array())) {
    const int64_t measure = Int(e, "measure");
    if ((uint64_t(Int(e, "flags")) & CX_ENTRY_FLAG_NOTE) == 0 || measure < first ||
        measure > last) {
      continue;
    }
    const uint64_t position =
        uint64_t(measure - first) * grid.unitsPerMeasure + uint64_t(Int(e, "position"));
    for (const Json& key : e.value("keys", Json::array())) {
      grid.hits.push_back({position, key.get<int>(), 0});
    }
  }
  for (int64_t m = first; m <= last; ++m) {
    if (std::string text = Markers(score, number, m); !text.empty()) {
      grid.markers.push_back({static_cast<int32_t>(m), text});
    }
  }
  for (const Json& a : score.value("staff_style_assignments", Json::array())) {
    if (Int(a, "number") == number && IsSlashStyle(score, Int(a, "style"))) {
      grid.slashMeasures.push_back({static_cast<int32_t>(Int(a, "start_measure")),
                                    static_cast<int32_t>(Int(a, "end_measure"))});
    }
  }
  grid.title = title.empty() ? "Staff " + std::to_string(number) : title;
  grid.subtitle = "staff " + std::to_string(number) + " (slot " + std::to_string(slot) +
                  "), measures " + std::to_string(first) + "-" + std::to_string(last) + " in " +
                  MeterName(beats, beatDuration) + ", " + Writing(score, *staff, first) +
                  ", placed by " + std::to_string(imports.size()) + " import(s)";
  if (std::string after = Markers(score, number, last + 1); !after.empty()) {
    grid.subtitle += "; " + after + " at measure " + std::to_string(last + 1);
  }
  return grid;
}

}  // namespace

int main(int argc, char** argv) {
  std::string input, output, title;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if ((arg == "-o" || arg == "--title") && i + 1 < argc) {
      (arg == "-o" ? output : title) = argv[++i];
    } else if (input.empty() && arg[0] != '-') {
      input = arg;
    } else {
      input.clear();
      break;
    }
  }
  if (input.empty() || output.empty()) {
    std::cerr << "usage: staff_picture RESULT.json -o OUT.svg [--title TEXT]\n";
    return 2;
  }
  std::ifstream in(input);
  const Json result = Json::parse(in, nullptr, false);
  if (result.is_discarded() || !result.is_object() || !result.contains("score")) {
    std::cerr << "staff_picture: " << input << " is not a cantel-host result\n";
    return 2;
  }
  const std::optional<DrumGrid> grid = StaffGrid(result, title);
  if (!grid) {
    std::cerr << "staff_picture: nothing was placed in this run\n";
    return 1;
  }
  const std::string svg = rw::tools::DrumGridSvg(*grid);
  if (!rw::tools::WriteWholeFile(output,
                                 {reinterpret_cast<const uint8_t*>(svg.data()), svg.size()})) {
    std::cerr << "staff_picture: cannot write " << output << "\n";
    return 2;
  }
  return 0;
}
