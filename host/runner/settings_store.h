// The per-user settings the plug-in keeps: a folder under XDG_CONFIG_HOME on
// POSIX, the registry key Software\HarpWorks on Windows, holding the values
// "rhythmweavePI" and the values of the parts and options beside it.
#ifndef CANTEL_HOST_SETTINGS_STORE_H
#define CANTEL_HOST_SETTINGS_STORE_H

#include <nlohmann/json.hpp>

#include "scenario.h"

namespace cantel_host {

// No key unless the scenario has "setting" (then as write_setting).
void prepare_setting(const Scenario& scenario, const RunFolders& folders);
// Creates the key. A number becomes "rhythmweavePI", 4 bytes little-endian,
// and "key only" removes it; an object sets each value it names to its
// number, or removes it for null.
void write_setting(const nlohmann::json& setting, const RunFolders& folders);
// {"key": present, "value_hex": the placement's bytes or null}
nlohmann::json settings_after(const RunFolders& folders);
// Every value the key holds, by name, as hex.
nlohmann::json settings_values_after(const RunFolders& folders);

}  // namespace cantel_host

#endif
