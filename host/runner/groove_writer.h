// Writes a groove described in a scenario as a Standard MIDI File, so that
// scenarios carry readable notes rather than binary files.
#ifndef CANTEL_HOST_GROOVE_WRITER_H
#define CANTEL_HOST_GROOVE_WRITER_H

#include <filesystem>
#include <nlohmann/json.hpp>

namespace cantel_host {

// {"name", "division": 480, "time_signature": [4, 4], "channel": 9,
//  "notes": [[tick, key], ...], "end": tick of the end of the track}, or
// {"name", "bytes": ["4D 54 68 64  // MThd", ...]}: the file's bytes as
// commented lines of hex, for a file the notes cannot describe.
void write_groove(const nlohmann::json& groove, const std::filesystem::path& file);

}  // namespace cantel_host

#endif
