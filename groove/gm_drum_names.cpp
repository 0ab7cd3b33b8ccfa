#include "gm_drum_names.h"

#include <array>

namespace rw::groove {
namespace {

constexpr int kFirstKey = 35;
constexpr std::array<const char*, 47> kNames = {"Acoustic Bass Drum",
                                                "Bass Drum 1",
                                                "Side Stick",
                                                "Acoustic Snare",
                                                "Hand Clap",
                                                "Electric Snare",
                                                "Low Floor Tom",
                                                "Closed Hi-Hat",
                                                "High Floor Tom",
                                                "Pedal Hi-Hat",
                                                "Low Tom",
                                                "Open Hi-Hat",
                                                "Low-Mid Tom",
                                                "Hi-Mid Tom",
                                                "Crash Cymbal 1",
                                                "High Tom",
                                                "Ride Cymbal 1",
                                                "Chinese Cymbal",
                                                "Ride Bell",
                                                "Tambourine",
                                                "Splash Cymbal",
                                                "Cowbell",
                                                "Crash Cymbal 2",
                                                "Vibraslap",
                                                "Ride Cymbal 2",
                                                "Hi Bongo",
                                                "Low Bongo",
                                                "Mute Hi Conga",
                                                "Open Hi Conga",
                                                "Low Conga",
                                                "High Timbale",
                                                "Low Timbale",
                                                "High Agogo",
                                                "Low Agogo",
                                                "Cabasa",
                                                "Maracas",
                                                "Short Whistle",
                                                "Long Whistle",
                                                "Short Guiro",
                                                "Long Guiro",
                                                "Claves",
                                                "Hi Wood Block",
                                                "Low Wood Block",
                                                "Mute Cuica",
                                                "Open Cuica",
                                                "Mute Triangle",
                                                "Open Triangle"};

// As grooves/groove_format.py spells them, so that a grid reads like the
// descriptions the grooves were written from.
constexpr std::array<const char*, 47> kShortNames = {
    "ABD", "BD",  "SS", "SN",  "CP",  "ES",  "LFT", "HH",  "HFT", "PH",  "LT",  "OH",
    "LMT", "HMT", "CR", "HT",  "RD",  "CN",  "RB",  "TB",  "SP",  "CB",  "CR2", "VS",
    "RD2", "HB",  "LB", "MHC", "OHC", "LC",  "HTI", "LTI", "HA",  "LA",  "CA",  "MA",
    "SWH", "LWH", "SG", "LG",  "CL",  "HWB", "LWB", "MCU", "OCU", "MTR", "OTR"};
static_assert(kShortNames.size() == kNames.size());

}  // namespace

std::string DrumKeyName(int key) {
  if (key >= kFirstKey && key < kFirstKey + static_cast<int>(kNames.size())) {
    return kNames[static_cast<std::size_t>(key - kFirstKey)];
  }
  return "key " + std::to_string(key);
}

std::string DrumKeyShortName(int key) {
  if (key >= kFirstKey && key < kFirstKey + static_cast<int>(kShortNames.size())) {
    return kShortNames[static_cast<std::size_t>(key - kFirstKey)];
  }
  // Appended, not concatenated: GCC 12 at -O3 warns falsely about the
  // overlap of a literal and a temporary.
  std::string name = "k";
  name += std::to_string(key);
  return name;
}

}  // namespace rw::groove
