// A scenario file: the score to build, the world around it (groove folder,
// temporary folder, stored setting, language, faults) and the user's part.
// host/SCENARIOS.md describes the format.
#ifndef CANTEL_HOST_SCENARIO_H
#define CANTEL_HOST_SCENARIO_H

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cantel_engine/document.h"

namespace cantel_host {

using nlohmann::json;

// "SIOS", "LP\x02O" (escaped bytes) or a number -> the 32-bit tag.
std::uint32_t parse_tag(const json& value);
// The tag's bytes in memory order, unprintable ones as \xNN.
std::string tag_name(std::uint32_t tag);
std::string hex(const cantel_engine::Bytes& bytes);
// A path as UTF-8 in a plain std::string.
std::string utf8(const std::filesystem::path& path);

// The folders of one run, all inside a fresh working folder, and the
// plug-in's own folders and file in them. The names the plug-in gives them
// are written in prepare_folders only; everything else reads the paths here.
struct RunFolders {
  std::filesystem::path work;
  std::filesystem::path component_files;  // path kind 11
  std::filesystem::path grooves;          // the groove folder in it
  std::filesystem::path temporary;        // the temporary folder
  std::filesystem::path named_temporary;  // what path kind 9 names: it, or a path through a file
  std::filesystem::path temporary_file;   // the plug-in's file in the temporary folder
  std::filesystem::path config;           // XDG_CONFIG_HOME
  // Where the user's own folders are: XDG_DATA_HOME on POSIX, the Documents
  // folder the profile names on Windows. It exists, as a user's does.
  std::filesystem::path user_data;
  std::filesystem::path user_grooves;  // the user's own groove folder in it; made only on demand
};

struct Scenario {
  json data;
  std::filesystem::path file;
  std::string name;
};

Scenario load_scenario(const std::filesystem::path& file);
// The score, the host's paths and the faults of the document; the user's
// part is scripted per invoke.
void build_score(const Scenario& scenario, const RunFolders& folders,
                 cantel_engine::Document& document);
ERegion document_region(const Scenario& scenario, const cantel_engine::Document& document);
ERegion parse_region(const json& region);
std::vector<cantel_engine::DialogAction> parse_actions(const json& actions);
std::uint16_t parse_answer(const json& answer);
json region_json(const ERegion& region);
std::string engine_variant(const Scenario& scenario);  // "full" or "reduced"

}  // namespace cantel_host

#endif
