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
// "groove_folder_missing"), its files and folders, the temporary folder
// with the scenario's "temp_files", the user's data folder, and in it the
// user's own groove folder when the scenario gives it grooves.
RunFolders prepare_folders(const Scenario& scenario);

// A groove file's or folder's name as a path inside its folder: relative,
// "/" between folders ("Latin/Fills/Samba.mid"). An empty name or part, an
// absolute path or a drive, "." or "..", and a backslash are refused with a
// message that names the scenario's `key`.
std::filesystem::path groove_path(const std::string& key, const std::string& name);

// Grooves written into `folder` (the groove folder or the user's own), their
// folders made as needed, and files removed from it, by groove_path names.
void add_groove_files(const std::string& key, const json& grooves,
                      const std::filesystem::path& folder);
void remove_groove_files(const std::string& key, const std::vector<std::string>& names,
                         const std::filesystem::path& folder);

// Makes the run's user data folder the one the plug-in finds: XDG_DATA_HOME
// on POSIX, the profile's Documents folder on Windows.
void point_user_data(const RunFolders& folders);

// What the folder that path kind 9 names holds: [{"name", "size"}] by name
// (size null for a folder); empty when that path is no folder.
json temp_files_after(const RunFolders& folders);

// What the user's own groove folder holds, its subfolders' too: [{"name",
// "size"}] by relative path with "/" (size null for a folder); null when
// there is no such folder.
json user_folder_after(const RunFolders& folders);

// LC_ALL, LC_MESSAGES and LANG from "locale" (each one absent is unset) or
// "language"; before the plug-in loads. On Windows the first of them that is
// not empty picks the thread's UI language, which selects the resources.
void apply_locale(const Scenario& scenario);

}  // namespace cantel_host

#endif
