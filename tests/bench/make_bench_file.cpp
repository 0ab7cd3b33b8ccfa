// Writes one benchmark groove to disk, for measuring a whole rwgroove run:
//   groove_bench_file OUT ordinary|worst MEGABYTES
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "bench_files.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: groove_bench_file OUT ordinary|worst MEGABYTES\n");
    return 2;
  }
  const std::size_t bytes = std::size_t(std::atol(argv[3])) << 20;
  const auto file = std::strcmp(argv[2], "worst") == 0 ? rw::groove::bench::WorstCaseFile(bytes)
                                                       : rw::groove::bench::OrdinaryFile(bytes);
  std::ofstream out(argv[1], std::ios::binary);
  out.write(reinterpret_cast<const char*>(file.data()), std::streamsize(file.size()));
  return out ? 0 : 1;
}
