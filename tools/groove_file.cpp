#include "groove_file.h"

#include <cstdio>
#include <fstream>
#include <memory>

namespace rw::tools {

ReadOutcome ReadGrooveFile(const std::string& path, GrooveBuffer& groove) {
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  const std::unique_ptr<std::FILE, Closer> file(std::fopen(path.c_str(), "rb"));
  if (!file) return ReadOutcome::kCannotRead;
  return groove::ReadGrooveFile(file.get(), groove);
}

bool WriteWholeFile(const std::string& path, std::span<const uint8_t> bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  out.close();
  return static_cast<bool>(out);
}

}  // namespace rw::tools
