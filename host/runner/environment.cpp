#include "environment.h"

#if defined(_WIN32)
#include <windows.h>
#endif

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "groove_writer.h"

namespace cantel_host {

namespace fs = std::filesystem;

namespace {

cantel_engine::Bytes parse_hex(const std::string& text) {
  if (text.size() % 2 != 0) throw std::runtime_error("odd number of hex digits: " + text);
  cantel_engine::Bytes out;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    out.push_back(static_cast<std::uint8_t>(std::stoul(text.substr(i, 2), nullptr, 16)));
  }
  return out;
}

// A plain file name inside one of the run's folders.
fs::path inside(const fs::path& folder, const std::string& name) {
  const fs::path file = fs::u8path(name);
  if (name.empty() || file.has_parent_path() || file.is_absolute()) {
    throw std::runtime_error("a file name, not a path: " + name);
  }
  return folder / file;
}

std::string generic_utf8(const fs::path& path) {
  const std::u8string text = path.generic_u8string();
  return std::string(text.begin(), text.end());
}

// Copies a folder of the scenario's, with its subfolders, into `folder`.
void copy_folder(const Scenario& scenario, const std::string& key, const fs::path& folder) {
  const fs::path source =
      scenario.file.parent_path() / fs::u8path(scenario.data[key].get<std::string>());
  if (!fs::is_directory(source)) {
    throw std::runtime_error("\"" + key + "\": no folder " + utf8(source));
  }
  fs::create_directories(folder);
  fs::copy(source, folder, fs::copy_options::recursive);
}

}  // namespace

// A backslash is refused rather than read: Windows takes it for a separator,
// POSIX for part of a name, and both tiers must make the same files.
fs::path groove_path(const std::string& key, const std::string& name) {
  auto refuse = [&](const std::string& why) {
    throw std::runtime_error("\"" + key + "\": the name \"" + name + "\" " + why);
  };
  if (name.empty()) refuse("is empty");
  if (name.front() == '/') refuse("is absolute; a name is a path inside its folder");
  if (name.find(':') != std::string::npos) {
    refuse("names a drive; a name is a path inside its folder");
  }
  if (name.find('\\') != std::string::npos) refuse("holds a backslash; \"/\" separates folders");
  fs::path relative;
  std::size_t begin = 0;
  while (true) {
    const std::size_t slash = name.find('/', begin);
    const std::string part = name.substr(begin, slash == std::string::npos ? slash : slash - begin);
    if (part.empty()) refuse("has an empty part");
    if (part == "..") refuse("steps out of its folder with \"..\"");
    if (part == ".") refuse("has a part \".\"; a name is a path inside its folder");
    relative /= fs::u8path(part);
    if (slash == std::string::npos) break;
    begin = slash + 1;
  }
  return relative;
}

RunFolders prepare_folders(const Scenario& scenario) {
  RunFolders folders;
  folders.work = fs::temp_directory_path() / ("cantel-host-" + scenario.name);
  fs::remove_all(folders.work);
  // What the plug-in calls its folders and its file: only here.
  folders.component_files = folders.work / "Component Files";
  folders.grooves = folders.component_files / "Rhythm Weave";
  folders.temporary = folders.work / "temp";
  folders.temporary_file = folders.temporary / "RhythmWeave$$Temp$$File.mid";
  folders.config = folders.work / "config";
#if defined(_WIN32)
  folders.user_data = folders.work / "Documents";
#else
  folders.user_data = folders.work / "data";
#endif
  folders.user_grooves = folders.user_data / "Rhythm Weave";
  for (const fs::path& folder :
       {folders.component_files, folders.temporary, folders.config, folders.user_data}) {
    fs::create_directories(folder);
  }

  const json& d = scenario.data;
  folders.named_temporary = folders.temporary;
  const json faults = d.value("faults", json::object());
  if (faults.value("temporary", std::string()) == "unwritable") {
    // A path through a plain file cannot hold a new file, whoever runs us.
    const fs::path blocker = folders.temporary / "not-a-folder";
    std::ofstream(blocker).put('x');
    folders.named_temporary = blocker;
  }
  if (d.value("groove_folder_missing", false)) {
    for (const char* key : {"groove_folder", "groove_files", "groove_dirs"}) {
      if (d.contains(key)) {
        throw std::runtime_error(std::string("\"") + key + "\" needs a groove folder");
      }
    }
  } else {
    fs::create_directories(folders.grooves);
  }
  if (d.contains("groove_folder")) copy_folder(scenario, "groove_folder", folders.grooves);
  if (d.contains("groove_files")) {
    add_groove_files("groove_files", d["groove_files"], folders.grooves);
  }
  for (const json& name : d.value("groove_dirs", json::array())) {
    fs::create_directories(folders.grooves / groove_path("groove_dirs", name.get<std::string>()));
  }
  // The user's own groove folder exists only when a scenario puts grooves there.
  if (d.contains("user_groove_folder")) {
    copy_folder(scenario, "user_groove_folder", folders.user_grooves);
  }
  if (d.contains("user_groove_files")) {
    fs::create_directories(folders.user_grooves);
    add_groove_files("user_groove_files", d["user_groove_files"], folders.user_grooves);
  }
  for (const json& t : d.value("temp_files", json::array())) {
    const auto bytes = parse_hex(t.value("hex", std::string()));
    std::ofstream(inside(folders.temporary, t.at("name").get<std::string>()), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  return folders;
}

void add_groove_files(const std::string& key, const json& grooves, const fs::path& folder) {
  for (const json& g : grooves) {
    const fs::path file = folder / groove_path(key, g.at("name").get<std::string>());
    fs::create_directories(file.parent_path());
    write_groove(g, file);
  }
}

void remove_groove_files(const std::string& key, const std::vector<std::string>& names,
                         const fs::path& folder) {
  for (const std::string& name : names) fs::remove(folder / groove_path(key, name));
}

void point_user_data(const RunFolders& folders) {
#if defined(_WIN32)
  // A moved Documents folder is what the profile's "User Shell Folders" say,
  // and the shell's folder look-up reads them first. The Wine registry
  // outlives the run: every run sets it, and nothing needs setting back.
  const std::wstring path = fs::absolute(folders.user_data).make_preferred().wstring();
  HKEY key = nullptr;
  LSTATUS status =
      RegCreateKeyExW(HKEY_CURRENT_USER,
                      L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders",
                      0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
  if (status == ERROR_SUCCESS) {
    status = RegSetValueExW(key, L"Personal", 0, REG_EXPAND_SZ,
                            reinterpret_cast<const BYTE*>(path.c_str()),
                            static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
  }
  if (status != ERROR_SUCCESS) {
    throw std::runtime_error("cannot point the Documents folder at " + utf8(folders.user_data));
  }
#else
  setenv("XDG_DATA_HOME", utf8(folders.user_data).c_str(), 1);
#endif
}

json temp_files_after(const RunFolders& folders) {
  json files = json::array();
  std::error_code error;
  if (!fs::is_directory(folders.named_temporary, error)) return files;
  std::vector<fs::directory_entry> entries;
  for (const auto& entry : fs::directory_iterator(folders.named_temporary))
    entries.push_back(entry);
  std::sort(entries.begin(), entries.end());
  for (const auto& entry : entries) {
    json file = {{"name", utf8(entry.path().filename())}};
    file["size"] = entry.is_regular_file() ? json(entry.file_size()) : json(nullptr);
    files.push_back(file);
  }
  return files;
}

json user_folder_after(const RunFolders& folders) {
  std::error_code error;
  if (!fs::is_directory(folders.user_grooves, error)) return nullptr;
  std::vector<std::pair<std::string, json>> entries;
  for (const auto& entry : fs::recursive_directory_iterator(folders.user_grooves)) {
    entries.emplace_back(generic_utf8(entry.path().lexically_relative(folders.user_grooves)),
                         entry.is_regular_file() ? json(entry.file_size()) : json(nullptr));
  }
  std::sort(entries.begin(), entries.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  json files = json::array();
  for (const auto& [name, size] : entries) files.push_back({{"name", name}, {"size", size}});
  return files;
}

void apply_locale(const Scenario& scenario) {
  const json& d = scenario.data;
  if (d.contains("language") && d.contains("locale")) {
    throw std::runtime_error("\"language\" and \"locale\" exclude each other");
  }
  const std::array<const char*, 3> names = {"LC_ALL", "LC_MESSAGES", "LANG"};
  json variables = json::object();
  if (d.contains("locale")) {
    variables = d["locale"];
    for (const auto& [name, value] : variables.items()) {
      if (std::find_if(names.begin(), names.end(), [&](const char* n) { return name == n; }) ==
          names.end()) {
        throw std::runtime_error("\"locale\" sets LC_ALL, LC_MESSAGES and LANG, not " + name);
      }
      (void)value;
    }
  } else {
    const std::string language = d.value("language", std::string("en"));
    std::string locale = "C";
    if (language == "ja") locale = "ja_JP.UTF-8";
    if (language == "pl") locale = "pl_PL.UTF-8";
    if (language == "sv") locale = "sv_SE.UTF-8";
    for (const char* name : names) variables[name] = locale;
  }
  std::string chosen;  // the first that is set and not empty, as a POSIX program reads them
  for (const char* name : names) {
    const std::string value = variables.value(name, std::string());
    if (chosen.empty()) chosen = value;
#if defined(_WIN32)
    _putenv_s(name, value.c_str());  // an empty value removes the variable
#else
    if (variables.contains(name)) {
      setenv(name, value.c_str(), 1);
    } else {
      unsetenv(name);
    }
#endif
  }
#if defined(_WIN32)
  // Windows picks a module's resources by the thread's UI language.
  LANGID id = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
  if (chosen.rfind("ja", 0) == 0) id = MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT);
  if (chosen.rfind("pl", 0) == 0) id = MAKELANGID(LANG_POLISH, SUBLANG_DEFAULT);
  if (chosen.rfind("sv", 0) == 0) id = MAKELANGID(LANG_SWEDISH, SUBLANG_SWEDISH);
  SetThreadUILanguage(id);
  SetThreadLocale(MAKELCID(id, SORT_DEFAULT));
#else
  (void)chosen;
#endif
}

}  // namespace cantel_host
