// The world around the score: the run's folders (groove folder, temporary
// folder, settings), the files in them, and the locale the plug-in sees.
#ifndef CANTEL_HOST_ENVIRONMENT_H
#define CANTEL_HOST_ENVIRONMENT_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "scenario.h"

namespace cantel_host {

// A fresh working folder with the groove folder (unless
// "groove_folder_missing"), its files and folders, and the temporary folder
// with the scenario's "temp_files".
RunFolders prepare_folders(const Scenario& scenario);

// Grooves written into the groove folder, and files removed from it, by name.
void add_groove_files(const json& grooves, const RunFolders& folders);
void remove_groove_files(const std::vector<std::string>& names, const RunFolders& folders);

// What the folder that path kind 9 names holds: [{"name", "size"}] by name
// (size null for a folder); empty when that path is no folder.
json temp_files_after(const RunFolders& folders);

// LC_ALL, LC_MESSAGES and LANG from "locale" (each one absent is unset) or
// "language"; before the plug-in loads. On Windows the first of them that is
// not empty picks the thread's UI language, which selects the resources.
void apply_locale(const Scenario& scenario);

}  // namespace cantel_host

#endif
