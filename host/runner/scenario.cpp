#include "scenario.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace cantel_host {

namespace fs = std::filesystem;
using cantel_engine::Bytes;
using cantel_engine::Document;

std::uint32_t parse_tag(const json& value) {
  if (value.is_number()) return value.get<std::uint32_t>();
  const std::string text = value.get<std::string>();
  Bytes bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 3 < text.size() && text[i + 1] == 'x') {
      bytes.push_back(static_cast<std::uint8_t>(std::stoul(text.substr(i + 2, 2), nullptr, 16)));
      i += 3;
    } else {
      bytes.push_back(static_cast<std::uint8_t>(text[i]));
    }
  }
  if (bytes.size() != 4) throw std::runtime_error("a tag has four bytes: " + text);
  return CX_TAG(bytes[0], bytes[1], bytes[2], bytes[3]);
}

std::string tag_name(std::uint32_t tag) {
  static const char digits[] = "0123456789ABCDEF";
  std::string out;
  for (int i = 0; i < 4; ++i) {
    const auto c = static_cast<std::uint8_t>(tag >> (8 * i));
    if (c >= 0x20 && c < 0x7F && c != '\\') {
      out.push_back(static_cast<char>(c));
    } else {
      out += "\\x";
      out.push_back(digits[c >> 4]);
      out.push_back(digits[c & 15]);
    }
  }
  return out;
}

std::string hex(const Bytes& bytes) {
  static const char digits[] = "0123456789abcdef";
  std::string out;
  for (std::uint8_t b : bytes) {
    out.push_back(digits[b >> 4]);
    out.push_back(digits[b & 15]);
  }
  return out;
}

std::string utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

namespace {

Bytes record_bytes(const json& r) {
  if (r.contains("hex")) {
    const std::string text = r["hex"].get<std::string>();
    Bytes out;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
      out.push_back(static_cast<std::uint8_t>(std::stoul(text.substr(i, 2), nullptr, 16)));
    }
    return out;
  }
  if (r.contains("words")) {
    Bytes out;
    for (const json& w : r["words"]) {
      const auto word = static_cast<std::uint16_t>(w.get<std::int64_t>() & 0xFFFF);
      out.push_back(static_cast<std::uint8_t>(word & 0xFF));
      out.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    if (r.contains("size")) out.resize(r["size"].get<std::size_t>(), 0);
    return out;
  }
  return Bytes(r.value("size", std::size_t{0}), 0);
}

std::uint16_t add_channel(Document& document, std::uint16_t word0) {
  std::uint16_t number = 1;
  while (document.record(CX_TAG_CHANNEL_DEF, number, 0)) ++number;
  Bytes channel(CX_CHANNEL_DEF_SIZE, 0);
  cx_put_u16(channel.data(), 0, word0);
  document.set_record(CX_TAG_CHANNEL_DEF, number, 0, channel);
  return number;
}

// Six elements of (channel definition, 0, 0, 1); the number is stored as is.
void set_playback(Document& document, std::uint16_t staff, std::uint16_t channel) {
  Bytes playback(CX_PLAYBACK_SIZE, 0);
  for (std::size_t element = 0; element < 6; ++element) {
    cx_put_u16(playback.data(), element * 8, channel);
    cx_put_u16(playback.data(), element * 8 + 6, 1);
  }
  document.set_record(CX_TAG_PLAYBACK, staff, 0, playback);
}

void build_staff(const json& s, Document& document) {
  const std::uint16_t staff =
      document.add_staff(s.value("name", std::string()), s.value("abbreviation", std::string()));
  if (s.contains("spec_words")) {
    Bytes spec = *document.record(CX_TAG_STAFF_SPEC, staff, 0);
    for (const auto& [offset, value] : s["spec_words"].items()) {
      cx_put_u16(spec.data(), std::stoul(offset), value.get<std::uint16_t>());
    }
    document.set_record(CX_TAG_STAFF_SPEC, staff, 0, spec);
  }
  if (s.value("drum", false)) {
    set_playback(document, staff, add_channel(document, 0x8009));
  } else if (s.contains("channel")) {
    set_playback(document, staff, add_channel(document, s["channel"].get<std::uint16_t>()));
  }
  // "clefs" gives a clef per measure from the first; "clef" the rest.
  const json clefs = s.value("clefs", json::array());
  for (std::uint16_t m = 1; m <= document.measure_count(); ++m) {
    if (m <= clefs.size()) {
      document.set_clef(staff, m, clefs[m - 1u].get<std::uint16_t>());
    } else if (s.contains("clef")) {
      document.set_clef(staff, m, s["clef"].get<std::uint16_t>());
    }
  }
  for (const json& n : s.value("notes", json::array())) {
    document.add_entry(staff, n.at("measure").get<std::uint16_t>(),
                       n.value("layer", std::uint16_t{0}), n.value("position", 0),
                       n.value("duration", 1024), n.value("keys", std::vector<std::uint16_t>{}));
  }
}

}  // namespace

ERegion parse_region(const json& r) {
  ERegion region{};
  region.startList = r.value("start_list", std::uint16_t{0});
  region.startSlot = r.at("start_slot").get<std::uint16_t>();
  region.startMeasure = r.at("start_measure").get<std::uint16_t>();
  region.startPosition = r.value("start_position", 0);
  region.endList = r.value("end_list", std::uint16_t{0});
  region.endSlot = r.at("end_slot").get<std::uint16_t>();
  region.endMeasure = r.at("end_measure").get<std::uint16_t>();
  const json end = r.value("end_position", json("end"));
  region.endPosition = end.is_string() ? CX_END_OF_MEASURE : end.get<std::int32_t>();
  return region;
}

std::vector<cantel_engine::DialogAction> parse_actions(const json& actions) {
  using Kind = cantel_engine::DialogAction::Kind;
  std::vector<cantel_engine::DialogAction> out;
  for (const json& a : actions) {
    cantel_engine::DialogAction action;
    if (a.contains("click")) {
      action.kind = Kind::Click;
      action.control = a["click"].get<int>();
    } else if (a.contains("style")) {
      action.kind = Kind::ChooseStyle;
      action.text = a["style"].get<std::string>();
    } else if (a.contains("select")) {
      action.kind = Kind::ChooseRow;
      action.control = a["select"].get<int>();
      action.row = a.value("row", -1);
      action.text = a.value("text", std::string());
    } else if (a.contains("close")) {
      action.kind = Kind::Close;
    } else if (a.contains("remove_groove_file")) {
      action.kind = Kind::RemoveGrooveFile;
      action.text = a["remove_groove_file"].get<std::string>();
    } else {
      throw std::runtime_error("unknown dialog action " + a.dump());
    }
    out.push_back(action);
  }
  return out;
}

std::uint16_t parse_answer(const json& a) {
  if (a.is_number()) return a.get<std::uint16_t>();
  const std::string text = a.get<std::string>();
  if (text == "yes") return CX_ID_YES;
  if (text == "no") return CX_ID_NO;
  throw std::runtime_error("an answer is \"yes\", \"no\" or a number: " + text);
}

Scenario load_scenario(const fs::path& file) {
  std::ifstream in(file);
  if (!in) throw std::runtime_error("cannot read " + file.string());
  Scenario scenario;
  scenario.data = json::parse(in);
  scenario.file = file;
  scenario.name = file.stem().string();
  return scenario;
}

void build_score(const Scenario& scenario, const RunFolders& folders, Document& document) {
  const json& d = scenario.data;
  document.reset();
  if (d.contains("fonts")) {
    std::vector<cantel_engine::FontEntry> fonts;
    for (const json& f : d["fonts"]) {
      fonts.push_back({f.at("number").get<std::uint16_t>(), f.at("name").get<std::string>(),
                       f.value("parameter", std::uint16_t{0})});
    }
    document.set_fonts(fonts);
  }
  for (const json& p : d.value("font_preferences", json::array())) {
    const auto number = p.at("number").get<std::uint16_t>();
    if (p.value("remove", false)) {
      document.remove_record(CX_TAG_FONT_PREFS, number, 0);
    } else {
      document.set_font_preference(number, p.at("font").get<std::uint16_t>(),
                                   p.at("size").get<std::uint16_t>(),
                                   p.value("effects", std::uint16_t{0}));
    }
  }
  for (const json& m : d.value("measures", json::array())) {
    cantel_engine::MeasureSpec spec;
    spec.beats = m.value("beats", std::int16_t{4});
    spec.beat_duration = m.value("beat_duration", std::int16_t{1024});
    spec.composite = m.value("composite", false);
    spec.flags = m.value("flags", std::uint16_t{0});
    document.add_measures(m.value("count", 1), spec);
  }
  for (const json& s : d.value("staves", json::array())) build_staff(s, document);
  if (d.value("percussion_map", false)) {
    Bytes map(12, 0);
    cx_put_u16(map.data(), 0, 1);
    document.set_record(CX_TAG_PERCUSSION_MAP, 1, 0, map);
  }
  for (const json& r : d.value("records", json::array())) {
    const std::uint32_t tag = parse_tag(r.at("tag"));
    if (r.contains("text")) {
      const std::uint16_t number = document.add_text(tag, r["text"].get<std::string>());
      if (r.contains("number") && r["number"].get<std::uint16_t>() != number) {
        throw std::runtime_error("texts are numbered in the order they are given");
      }
      continue;
    }
    document.set_record(tag, r.at("number").get<std::uint16_t>(), r.value("sub", std::uint16_t{0}),
                        record_bytes(r));
  }

  document.set_path(CX_PATH_COMPONENT_FILES, utf8(folders.component_files));
  document.set_groove_folder(utf8(folders.grooves));
  document.set_path(CX_PATH_TEMPORARY, utf8(folders.named_temporary) +
                                           static_cast<char>(fs::path::preferred_separator));
  const json faults = d.value("faults", json::object());
  for (const json& tag : faults.value("refuse_writes", json::array())) {
    document.refuse_writes(parse_tag(tag));
  }
}

ERegion document_region(const Scenario& scenario, const Document& document) {
  if (scenario.data.contains("document_region")) {
    return parse_region(scenario.data["document_region"]);
  }
  ERegion region{};
  region.startSlot = 1;
  region.startMeasure = 1;
  region.endSlot = static_cast<std::uint16_t>(document.staves_in_order().size());
  region.endMeasure = document.measure_count();
  region.endPosition = CX_END_OF_MEASURE;
  return region;
}

json region_json(const ERegion& region) {
  // The record is packed: copy each field out before json binds a reference.
  const ERegion r = region;
  return {{"start_list", std::uint16_t{r.startList}},
          {"start_slot", std::uint16_t{r.startSlot}},
          {"start_measure", std::uint16_t{r.startMeasure}},
          {"start_position", std::int32_t{r.startPosition}},
          {"end_list", std::uint16_t{r.endList}},
          {"end_slot", std::uint16_t{r.endSlot}},
          {"end_measure", std::uint16_t{r.endMeasure}},
          {"end_position", std::int32_t{r.endPosition}}};
}

std::string engine_variant(const Scenario& scenario) {
  return scenario.data.value("faults", json::object()).value("engine", std::string("full"));
}

}  // namespace cantel_host
