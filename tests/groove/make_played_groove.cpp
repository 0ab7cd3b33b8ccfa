// Writes one played performance of an authored groove, for end-to-end
// scenarios:
//   make_played_groove GROOVE SEED OUT.mid
//   make_played_groove --list
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "played_groove_generator.h"

using rw::groove::testing::AuthoredGrooves;

int main(int argc, char** argv) {
  if (argc == 2 && std::string(argv[1]) == "--list") {
    for (const auto& groove : AuthoredGrooves()) std::printf("%s\n", groove.name.c_str());
    return 0;
  }
  if (argc != 4) {
    std::fprintf(stderr, "usage: make_played_groove GROOVE SEED OUT.mid | --list\n");
    return 2;
  }
  const rw::groove::testing::AuthoredGroove* groove =
      rw::groove::testing::FindAuthoredGroove(argv[1]);
  char* end = nullptr;
  const unsigned long seed = std::strtoul(argv[2], &end, 10);
  if (!groove || end == argv[2] || *end != '\0' || seed > 0xFFFFFFFFul) {
    std::fprintf(stderr, "make_played_groove: unknown groove or seed (see --list)\n");
    return 2;
  }
  rw::groove::testing::Performance performance;
  performance.seed = uint32_t(seed);
  const auto played = rw::groove::testing::PlayGroove(*groove, performance);
  std::ofstream out(argv[3], std::ios::binary);
  out.write(reinterpret_cast<const char*>(played.file.data()), std::streamsize(played.file.size()));
  if (!out) {
    std::fprintf(stderr, "make_played_groove: cannot write %s\n", argv[3]);
    return 1;
  }
  return 0;
}
