// The per-user setting the plug-in keeps: a folder under XDG_CONFIG_HOME on
// POSIX, the registry key Software\HarpWorks on Windows.
#ifndef CANTEL_HOST_SETTINGS_STORE_H
#define CANTEL_HOST_SETTINGS_STORE_H

#include <nlohmann/json.hpp>

#include "scenario.h"

namespace cantel_host {

// No key unless the scenario has "setting"; a number is stored as the value
// "rhythmweavePI", 4 bytes little-endian.
void prepare_setting(const Scenario& scenario, const RunFolders& folders);
// Creates the key; a number becomes the value, "key only" removes it.
void write_setting(const nlohmann::json& setting, const RunFolders& folders);
// {"key": present, "value_hex": bytes or null}
nlohmann::json settings_after(const RunFolders& folders);

}  // namespace cantel_host

#endif
