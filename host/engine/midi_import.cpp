// CX_ProcessMidiDataNoSplit: places the notes of a Standard MIDI File into
// the staff of the region's start slot, one chord entry per onset, replacing
// what the region's measures held.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "smf_reader.h"
#include "state.h"
#include "utf.h"

namespace cantel_engine {
namespace {

ERegion read_region(const std::uint8_t* block) {
  ERegion r{};
  r.startList = cx_get_u16(block, CX_REGION_START_LIST);
  r.startSlot = cx_get_u16(block, CX_REGION_START_SLOT);
  r.startMeasure = cx_get_u16(block, CX_REGION_START_MEASURE);
  r.startPosition = cx_get_i32(block, CX_REGION_START_POSITION);
  r.endList = cx_get_u16(block, CX_REGION_END_LIST);
  r.endSlot = cx_get_u16(block, CX_REGION_END_SLOT);
  r.endMeasure = cx_get_u16(block, CX_REGION_END_MEASURE);
  r.endPosition = cx_get_i32(block, CX_REGION_END_POSITION);
  return r;
}

std::string read_path(const std::uint8_t* block) {
  std::u16string units;
  for (std::size_t i = 0; i < CX_PATH_UNITS; ++i) {
    const auto unit = static_cast<char16_t>(cx_get_u16(block, CX_MIDI_BLOCK_PATH + 2 * i));
    if (unit == 0) break;
    units.push_back(unit);
  }
  return utf16_to_utf8(units);
}

bool read_file(std::string path, Bytes& bytes) {
  std::replace(path.begin(), path.end(), '\\', '/');
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return true;
}

// Chords of one measure: position in the measure -> keys sounding there.
using MeasureChords = std::map<std::int64_t, std::set<std::uint16_t>>;

std::uint32_t write_measure(std::uint16_t staff, std::uint16_t measure, std::int64_t length,
                            const MeasureChords& chords) {
  Bytes entries;
  std::uint32_t notes = 0;
  auto append = [&](std::int64_t position, std::int64_t end, const std::set<std::uint16_t>& keys) {
    entries.resize(entries.size() + CX_ENTRY_SIZE);
    const std::vector<std::uint16_t> ordered(keys.begin(), keys.end());
    write_entry(entries.data() + entries.size() - CX_ENTRY_SIZE,
                static_cast<std::int32_t>(position), static_cast<std::int32_t>(end - position),
                ordered);
    notes += static_cast<std::uint32_t>(std::min<std::size_t>(keys.size(), CX_ENTRY_MAX_NOTES));
  };
  if (chords.begin()->first > 0) append(0, chords.begin()->first, {});
  for (auto it = chords.begin(); it != chords.end(); ++it) {
    const auto next = std::next(it);
    append(it->first, next == chords.end() ? length : next->first, it->second);
  }
  store_frame(FrameKey{staff, measure, 0}, std::move(entries));
  return notes;
}

}  // namespace

std::uint32_t import_midi(const std::uint8_t* block) {
  State& s = state();
  ImportRecord record;
  record.region = read_region(block);
  record.path = read_path(block);
  const ERegion& region = record.region;
  const std::uint16_t staff = staff_of_slot(region.startList, region.startSlot);

  // Read first, whatever follows: the bytes are what the plug-in handed over.
  Bytes bytes;
  const bool opened = read_file(record.path, bytes);
  if (opened) record.bytes = bytes;
  SmfResult smf;
  if (!staff_exists(staff)) {
    record.error = "no staff in the region's start slot";
  } else if (region.startMeasure == 0 || region.endMeasure < region.startMeasure ||
             !measure_exists(region.startMeasure) || !measure_exists(region.endMeasure)) {
    record.error = "the region's measures do not exist";
  } else if (!opened) {
    record.error = "cannot open the file";
  } else if (smf = read_smf(bytes); !smf.ok) {
    record.error = smf.error;
  }
  if (!record.error.empty()) {
    record.result = 1;
    s.imports.push_back(record);
    return record.result;
  }

  // Measure starts, in duration units from the start of the region.
  std::vector<std::int64_t> starts;
  std::int64_t total = 0;
  for (std::uint32_t m = region.startMeasure; m <= region.endMeasure; ++m) {
    starts.push_back(total);
    total += measure_duration(static_cast<std::uint16_t>(m));
    clear_layers(staff, static_cast<std::uint16_t>(m));
  }

  std::map<std::size_t, MeasureChords> by_measure;  // index from the start measure
  const std::uint64_t division = smf.content.division;
  for (const SmfOnset& onset : smf.content.onsets) {
    if (onset.tick > static_cast<std::uint64_t>(INT64_MAX / 2048)) continue;
    const auto position = static_cast<std::int64_t>(onset.tick * 1024 / division);
    if (position >= total) continue;
    const auto after = std::upper_bound(starts.begin(), starts.end(), position);
    const auto index = static_cast<std::size_t>(std::distance(starts.begin(), after) - 1);
    by_measure[index][position - starts[index]].insert(onset.key);
  }

  for (const auto& [index, chords] : by_measure) {
    const auto measure = static_cast<std::uint16_t>(region.startMeasure + index);
    record.notes_placed += write_measure(staff, measure, measure_duration(measure), chords);
  }
  record.result = 0;
  s.imports.push_back(record);
  return 0;
}

}  // namespace cantel_engine
