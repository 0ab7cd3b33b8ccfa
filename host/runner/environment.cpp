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

fs::path groove_folder(const RunFolders& folders) {
  return folders.component_files / "Rhythm Weave";
}

// A name stays inside the folder it is meant for.
fs::path inside(const fs::path& folder, const std::string& name) {
  const fs::path file = fs::u8path(name);
  if (name.empty() || file.has_parent_path() || file.is_absolute()) {
    throw std::runtime_error("a file name, not a path: " + name);
  }
  return folder / file;
}

// A groove file's name may hold the subfolder of a style's fill or ending,
// "Fills/Rock.mid" or "Endings/Rock.mid"; the subfolder is made.
fs::path groove_file_path(const fs::path& grooves, const std::string& name) {
  const fs::path relative = fs::u8path(name);
  const fs::path sub = relative.parent_path();
  if (sub.empty()) return inside(grooves, name);
  const fs::path file = relative.filename();
  if ((sub != "Fills" && sub != "Endings") || file.empty() || file == "." || file == "..") {
    throw std::runtime_error("a groove file's folder is Fills or Endings: " + name);
  }
  fs::create_directories(grooves / sub);
  return grooves / relative;
}

}  // namespace

RunFolders prepare_folders(const Scenario& scenario) {
  RunFolders folders;
  folders.work = fs::temp_directory_path() / ("cantel-host-" + scenario.name);
  fs::remove_all(folders.work);
  folders.component_files = folders.work / "Component Files";
  folders.temporary = folders.work / "temp";
  folders.config = folders.work / "config";
  fs::create_directories(folders.component_files);
  fs::create_directories(folders.temporary);
  fs::create_directories(folders.config);

  const json& d = scenario.data;
  folders.named_temporary = folders.temporary;
  const json faults = d.value("faults", json::object());
  if (faults.value("temporary", std::string()) == "unwritable") {
    // A path through a plain file cannot hold a new file, whoever runs us.
    const fs::path blocker = folders.temporary / "not-a-folder";
    std::ofstream(blocker).put('x');
    folders.named_temporary = blocker;
  }
  const fs::path grooves = groove_folder(folders);
  if (d.value("groove_folder_missing", false)) {
    for (const char* key : {"groove_folder", "groove_files", "groove_dirs"}) {
      if (d.contains(key)) {
        throw std::runtime_error(std::string("\"") + key + "\" needs a groove folder");
      }
    }
  } else {
    fs::create_directories(grooves);
  }
  if (d.contains("groove_folder")) {
    const fs::path source = scenario.file.parent_path() / d["groove_folder"].get<std::string>();
    // The styles with their Fills and Endings subfolders.
    fs::copy(source, grooves, fs::copy_options::recursive);
  }
  add_groove_files(d.value("groove_files", json::array()), folders);
  for (const json& name : d.value("groove_dirs", json::array())) {
    fs::create_directories(inside(grooves, name.get<std::string>()));
  }
  for (const json& t : d.value("temp_files", json::array())) {
    const auto bytes = parse_hex(t.value("hex", std::string()));
    std::ofstream(inside(folders.temporary, t.at("name").get<std::string>()), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  return folders;
}

void add_groove_files(const json& grooves, const RunFolders& folders) {
  for (const json& g : grooves) {
    write_groove(g, groove_file_path(groove_folder(folders), g.at("name").get<std::string>()));
  }
}

void remove_groove_files(const std::vector<std::string>& names, const RunFolders& folders) {
  for (const std::string& name : names) fs::remove(groove_file_path(groove_folder(folders), name));
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
