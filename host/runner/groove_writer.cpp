#include "groove_writer.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace cantel_host {
namespace {

using Bytes = std::vector<std::uint8_t>;

void vlq(Bytes& out, std::uint32_t value) {
  std::uint8_t groups[5];
  int n = 0;
  do {
    groups[n++] = static_cast<std::uint8_t>(value & 0x7F);
    value >>= 7;
  } while (value != 0);
  while (n-- > 0) out.push_back(static_cast<std::uint8_t>(groups[n] | (n > 0 ? 0x80 : 0)));
}

void be(Bytes& out, std::uint32_t value, int width) {
  for (int i = width - 1; i >= 0; --i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

struct Event {
  std::uint32_t tick;
  int order;  // note-offs before note-ons at the same tick
  Bytes bytes;
};

// "4D 54 68 64  // MThd": bytes in hex up to a comment.
Bytes commented_bytes(const nlohmann::json& lines) {
  Bytes out;
  for (const auto& line : lines) {
    std::istringstream words(line.get<std::string>());
    for (std::string word; words >> word && word.rfind("//", 0) != 0;) {
      if (word.size() != 2 || !std::isxdigit(static_cast<unsigned char>(word[0])) ||
          !std::isxdigit(static_cast<unsigned char>(word[1]))) {
        throw std::runtime_error("not a byte in hex: " + word);
      }
      out.push_back(static_cast<std::uint8_t>(std::stoul(word, nullptr, 16)));
    }
  }
  return out;
}

void write(const std::filesystem::path& file, const Bytes& bytes) {
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

void write_groove(const nlohmann::json& groove, const std::filesystem::path& file) {
  if (groove.contains("bytes")) {
    write(file, commented_bytes(groove.at("bytes")));
    return;
  }
  const auto division = groove.value("division", std::uint16_t{480});
  const auto meter = groove.value("time_signature", std::vector<int>{4, 4});
  const auto channel = static_cast<std::uint8_t>(groove.value("channel", 9) & 0x0F);
  std::uint8_t denominator_power = 0;
  while ((1 << denominator_power) < meter.at(1)) ++denominator_power;

  std::vector<Event> events;
  events.push_back(
      {0, 0, {0xFF, 0x58, 0x04, static_cast<std::uint8_t>(meter.at(0)), denominator_power, 24, 8}});
  events.push_back({0, 0, {0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20}});  // 120 beats a minute
  std::uint32_t last = 0;
  for (const auto& note : groove.at("notes")) {
    // [tick, key], then optionally the channel, the velocity and the length.
    const auto tick = note.at(0).get<std::uint32_t>();
    const auto key = static_cast<std::uint8_t>(note.at(1).get<int>());
    const std::uint8_t ch =
        note.size() > 2 ? static_cast<std::uint8_t>(note.at(2).get<int>()) : channel;
    const auto velocity = static_cast<std::uint8_t>(note.size() > 3 ? note.at(3).get<int>() : 100);
    const std::uint32_t length = note.size() > 4 ? note.at(4).get<std::uint32_t>() : division / 8u;
    events.push_back({tick, 2, {static_cast<std::uint8_t>(0x90 | ch), key, velocity}});
    events.push_back({tick + length, 1, {static_cast<std::uint8_t>(0x80 | ch), key, 0}});
    last = std::max(last, tick + length);
  }
  std::stable_sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
    return a.tick != b.tick ? a.tick < b.tick : a.order < b.order;
  });
  Bytes track;
  std::uint32_t now = 0;
  for (const Event& e : events) {
    vlq(track, e.tick - now);
    now = e.tick;
    track.insert(track.end(), e.bytes.begin(), e.bytes.end());
  }
  const std::uint32_t end = std::max(last, groove.value("end", last));
  vlq(track, end - now);
  track.insert(track.end(), {0xFF, 0x2F, 0x00});

  Bytes out = {'M', 'T', 'h', 'd'};
  be(out, 6, 4);
  be(out, 0, 2);
  be(out, 1, 2);
  be(out, division, 2);
  out.insert(out.end(), {'M', 'T', 'r', 'k'});
  be(out, static_cast<std::uint32_t>(track.size()), 4);
  out.insert(out.end(), track.begin(), track.end());
  write(file, out);
}

}  // namespace cantel_host
