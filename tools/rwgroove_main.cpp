// rwgroove: the plug-in's groove reader on the command line, for groove
// authors.
//
//   rwgroove inspect FILE [--json]
//   rwgroove filter IN OUT [--json]
//
// Exit status: 0 loaded, 1 not loaded, 2 usage or I/O error.
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "groove_report.h"

namespace {

constexpr int kLoaded = 0;
constexpr int kNotLoaded = 1;
constexpr int kUsageOrIo = 2;
// The plug-in refuses files above this size; so does the tool.
constexpr std::uintmax_t kMaxFileSize = 0x3FFFFFFF;

int Usage() {
  std::cerr << "usage: rwgroove inspect FILE [--json]\n"
               "       rwgroove filter IN OUT [--json]\n";
  return kUsageOrIo;
}

// Reads the file whole into a buffer of twice its size, as the plug-in does.
bool ReadWholeFile(const std::string& path, rw::tools::GrooveFile& file) {
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) {
    std::cerr << "rwgroove: cannot open " << path << "\n";
    return false;
  }
  const std::streamoff size = in.tellg();
  if (size <= 0 || static_cast<std::uintmax_t>(size) > kMaxFileSize) {
    std::cerr << "rwgroove: " << path << ": size " << size << " is not between 1 and "
              << kMaxFileSize << " bytes\n";
    return false;
  }
  file.size = static_cast<uint64_t>(size);
  file.capacity = 2 * file.size;
  // Not zero-filled: the reader never reads beyond the file's bytes.
  file.buffer = std::make_unique_for_overwrite<uint8_t[]>(file.capacity);
  in.seekg(0);
  if (!in.read(reinterpret_cast<char*>(file.buffer.get()), size)) {
    std::cerr << "rwgroove: cannot read " << path << "\n";
    return false;
  }
  return true;
}

bool WriteWholeFile(const std::string& path, const rw::tools::GrooveFile& file) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(file.buffer.get()),
            static_cast<std::streamsize>(file.size));
  out.close();
  if (!out) {
    std::cerr << "rwgroove: cannot write " << path << "\n";
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  bool json = false;
  std::vector<std::string> positional;
  for (const std::string& arg : args) {
    if (arg == "--json") {
      json = true;
    } else if (!arg.empty() && arg[0] == '-') {
      return Usage();
    } else {
      positional.push_back(arg);
    }
  }
  if (positional.empty()) return Usage();
  const std::string& command = positional[0];
  const bool filter = command == "filter";
  if (!(command == "inspect" && positional.size() == 2) && !(filter && positional.size() == 3)) {
    return Usage();
  }

  rw::tools::GrooveFile file;
  if (!ReadWholeFile(positional[1], file)) return kUsageOrIo;
  const rw::tools::GrooveInspection inspection = rw::tools::InspectGroove(file);

  if (filter && inspection.loaded && !WriteWholeFile(positional[2], file)) {
    return kUsageOrIo;
  }
  if (json) {
    std::cout << rw::tools::JsonReport(inspection);
  } else {
    std::cout << rw::tools::TextReport(positional[1], inspection);
    if (filter) {
      std::cout << (inspection.loaded ? "  wrote " + positional[2] + "\n" : "  nothing written\n");
    }
  }
  return inspection.loaded ? kLoaded : kNotLoaded;
}
