// A person's view of what landed on a staff: one drum grid per measure.
#include <map>
#include <sstream>

#include "result.h"

namespace cantel_host {
namespace {

// General MIDI percussion, keys 35 to 81.
const char* drum_name(int key) {
  static const char* const names[] = {
      "Acoustic Bass Drum", "Bass Drum 1",    "Side Stick",     "Acoustic Snare",
      "Hand Clap",          "Electric Snare", "Low Floor Tom",  "Closed Hi-Hat",
      "High Floor Tom",     "Pedal Hi-Hat",   "Low Tom",        "Open Hi-Hat",
      "Low-Mid Tom",        "Hi-Mid Tom",     "Crash Cymbal 1", "High Tom",
      "Ride Cymbal 1",      "Chinese Cymbal", "Ride Bell",      "Tambourine",
      "Splash Cymbal",      "Cowbell",        "Crash Cymbal 2", "Vibraslap",
      "Ride Cymbal 2",      "Hi Bongo",       "Low Bongo",      "Mute Hi Conga",
      "Open Hi Conga",      "Low Conga",      "High Timbale",   "Low Timbale",
      "High Agogo",         "Low Agogo",      "Cabasa",         "Maracas",
      "Short Whistle",      "Long Whistle",   "Short Guiro",    "Long Guiro",
      "Claves",             "Hi Wood Block",  "Low Wood Block", "Mute Cuica",
      "Open Cuica",         "Mute Triangle",  "Open Triangle"};
  if (key < 35 || key > 81) return "(not a drum)";
  return names[key - 35];
}

bool is_slash_staff(const cantel_engine::Document& document, int staff) {
  for (const auto& r : document.records(CX_TAG_STAFF_STYLE_ASSIGN)) {
    if (r.number == staff) return true;
  }
  return false;
}

std::map<int, std::string> markers_by_measure(const cantel_engine::Document& document, int staff) {
  std::map<int, std::string> out;
  for (const auto& a : document.records(CX_TAG_EXPRESSION_ASSIGN)) {
    if (a.data.size() < 12 || cx_get_i16(a.data.data(), CX_EXPRESSION_ASSIGN_STAFF) != staff) continue;
    const auto def = document.record(CX_TAG_EXPRESSION_DEF, cx_get_u16(a.data.data(), 0), 0);
    if (!def || def->size() < 2) continue;
    const auto block = document.record(CX_TAG_TEXT_BLOCK, cx_get_u16(def->data(), 0), 0);
    if (!block || block->size() < 2) continue;
    std::string text = document.text(CX_TAG_EXPRESSION_TEXT, cx_get_u16(block->data(), 0)).value_or("");
    // Only the visible part: the font prefix is a run of caret commands.
    while (!text.empty() && text[0] == '^') {
      const auto close = text.find(')');
      if (close == std::string::npos) break;
      text.erase(0, close + 1);
    }
    out[a.number] += (out[a.number].empty() ? "" : " ") + text;
  }
  return out;
}

}  // namespace

std::string drum_view(const cantel_engine::Document& document, const std::set<int>& staves) {
  std::ostringstream out;
  const auto order = document.staves_in_order();
  for (std::size_t slot = 0; slot < order.size(); ++slot) {
    const std::uint16_t staff = order[slot];
    if (staves.count(staff) == 0) continue;
    out << "== staff " << staff << " (slot " << slot + 1 << ")\n";
    const bool slashes = is_slash_staff(document, staff);
    const auto markers = markers_by_measure(document, staff);
    for (std::uint16_t m = 1; m <= document.measure_count(); ++m) {
      const auto measure = document.record(CX_TAG_MEASURE, m, 0);
      const int length = measure ? cx_get_i16(measure->data(), CX_MEASURE_BEATS) *
                                       cx_get_i16(measure->data(), CX_MEASURE_BEAT_DURATION)
                                 : 0;
      const int columns = std::max(1, length / 256);
      std::map<int, std::string, std::greater<>> rows;
      std::string slash_row(static_cast<std::size_t>(columns), '.');
      for (std::uint16_t layer = 0; layer < 4; ++layer) {
        for (const auto& e : document.entries(staff, m, layer)) {
          const int column = std::clamp(e.position / 256, 0, columns - 1);
          if ((e.flags & CX_ENTRY_FLAG_NOTE) == 0) {
            if (slashes) slash_row[static_cast<std::size_t>(column)] = '/';
            continue;
          }
          for (int key : e.keys) {
            auto& row = rows.try_emplace(key, std::string(static_cast<std::size_t>(columns), '.'))
                            .first->second;
            row[static_cast<std::size_t>(column)] = 'x';
          }
        }
      }
      if (auto marker = markers.find(m); marker != markers.end()) out << "   " << marker->second << "\n";
      out << " measure " << m << "\n";
      if (rows.empty() && slash_row.find('/') == std::string::npos) {
        out << "   (empty)\n";
        continue;
      }
      for (const auto& [key, row] : rows) {
        char label[48];
        std::snprintf(label, sizeof label, "   %3d %-20s ", key, drum_name(key));
        out << label << row << "\n";
      }
      if (slash_row.find('/') != std::string::npos) out << "       slashes              " << slash_row << "\n";
    }
  }
  return out.str();
}

}  // namespace cantel_host
