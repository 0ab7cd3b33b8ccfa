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

}  // namespace

std::string DrumKeyName(int key) {
  if (key >= kFirstKey && key < kFirstKey + static_cast<int>(kNames.size())) {
    return kNames[static_cast<std::size_t>(key - kFirstKey)];
  }
  return "key " + std::to_string(key);
}

}  // namespace rw::groove
