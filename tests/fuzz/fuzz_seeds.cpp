// Writes the fuzzer's starting corpus: generated grooves, some damaged, and
// a few hand-made edge cases, one file each, into the folder given.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "smf_generator.h"

using namespace rw::groove::testing;

namespace {

void Save(const std::filesystem::path& dir, int index, const Bytes& bytes) {
  std::ofstream out(dir / ("seed-" + std::to_string(index) + ".mid"), std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: groove_fuzz_seeds DIR\n");
    return 2;
  }
  const std::filesystem::path dir = argv[1];
  std::filesystem::create_directories(dir);
  int index = 0;
  const Bytes kick = note(0, 0x99, 36, 100);
  Save(dir, index++, smf(0, 480, {cat({kick, kEndOfTrack})}));
  Save(dir, index++,
       smf(1, 480,
           {cat({tempo(0, 500000), timeSignature(0, 6, 3), kEndOfTrack}),
            cat({{0x00, 0xC0, 0x05}, note(0, 0x90, 60, 1), kEndOfTrack}),
            cat({kick, note(240, 0x89, 36, 0), kEndOfTrack})}));
  Save(dir, index++, smf(0, 0xE728, {cat({{0x00, 0xF0, 0x05, 1, 2, 3, 4, 0xF7}, kick})}));
  // Running events after a silenced one in tracks without End of Track,
  // whole and cut short.
  const Bytes growing = smf(1, 96,
                            {cat({kick, note(96, 0x89, 36, 64), kEndOfTrack}),
                             Bytes{0x00, 0xC0, 0x05, 0x00, 0x06, 0x00, 0x07}, cat({kEndOfTrack})});
  Save(dir, index++, growing);
  Save(dir, index++, Bytes(growing.begin(), growing.end() - 10));
  SmfGenerator generator(1);
  for (int i = 0; i < 200; ++i) Save(dir, index++, generator.File());
  for (int i = 0; i < 50; ++i) Save(dir, index++, generator.Noise());
  std::printf("%d seeds in %s\n", index, dir.c_str());
  return 0;
}
