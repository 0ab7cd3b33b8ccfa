#include "result.h"

#include "scenario.h"

namespace cantel_host {

using cantel_engine::Bytes;
using cantel_engine::Document;
using nlohmann::json;

namespace {

std::vector<int> words(const Bytes& bytes) {
  std::vector<int> out;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) out.push_back(cx_get_u16(bytes.data(), i));
  return out;
}

json text_of_block(const Document& document, std::uint32_t text_tag, std::uint16_t block) {
  const auto record = document.record(CX_TAG_TEXT_BLOCK, block, 0);
  if (!record || record->size() < 2) return nullptr;
  const auto text = document.text(text_tag, cx_get_u16(record->data(), 0));
  return text ? json(*text) : json(nullptr);
}

json channel_json(const Document& document, std::uint16_t number) {
  const auto record = document.record(CX_TAG_CHANNEL_DEF, number, 0);
  if (!record) return nullptr;
  json out = {{"number", number}, {"words", words(*record)}};
  if (const auto name = document.text(CX_TAG_CHANNEL_NAME, number)) out["name"] = *name;
  return out;
}

json staff_json(const Document& document, std::size_t slot, std::uint16_t staff) {
  json s = {{"slot", slot}, {"staff", staff}};
  const auto spec = document.record(CX_TAG_STAFF_SPEC, staff, 0);
  if (spec && spec->size() >= CX_STAFF_SPEC_SIZE) {
    s["full_name"] = text_of_block(document, CX_TAG_BLOCK_TEXT, cx_get_u16(spec->data(), 32));
    s["abbreviated_name"] =
        text_of_block(document, CX_TAG_BLOCK_TEXT, cx_get_u16(spec->data(), 30));
    s["spec"] = {{"flags", cx_get_u16(spec->data(), CX_STAFF_SPEC_FLAGS)},
                 {"font", cx_get_u16(spec->data(), CX_STAFF_SPEC_FONT)},
                 {"notation", cx_get_u16(spec->data(), CX_STAFF_SPEC_NOTATION)},
                 {"options", cx_get_u16(spec->data(), CX_STAFF_SPEC_OPTIONS)},
                 {"clefs", cx_get_u16(spec->data(), CX_STAFF_SPEC_CLEFS)},
                 {"options2", cx_get_u16(spec->data(), CX_STAFF_SPEC_OPTIONS2)}};
  }
  json clefs = json::array();
  json entries = json::array();
  for (std::uint16_t m = 1; m <= document.measure_count(); ++m) {
    clefs.push_back(document.clef(staff, m));
    for (std::uint16_t layer = 0; layer < 4; ++layer) {
      for (const auto& e : document.entries(staff, m, layer)) {
        entries.push_back({{"measure", m},
                           {"layer", layer + 1},
                           {"position", e.position},
                           {"duration", e.duration},
                           {"flags", e.flags},
                           {"keys", e.keys}});
      }
    }
  }
  s["clefs"] = clefs;
  if (const auto playback = document.record(CX_TAG_PLAYBACK, staff, 0)) {
    s["playback"] = words(*playback);
    if (playback->size() >= 18)
      s["channel"] = channel_json(document, cx_get_u16(playback->data(), 16));
  } else {
    s["playback"] = nullptr;
  }
  const auto percussion = document.record(CX_TAG_PERCUSSION_NOTATION, staff, 0);
  s["percussion_notation"] = percussion ? json(words(*percussion)) : json(nullptr);
  s["entries"] = entries;
  return s;
}

}  // namespace

json score_json(const Document& document) {
  json score;
  json measures = json::array();
  for (const auto& r : document.records(CX_TAG_MEASURE)) {
    if (r.data.size() < CX_MEASURE_SIZE) continue;
    measures.push_back({{"number", r.number},
                        {"beats", cx_get_i16(r.data.data(), CX_MEASURE_BEATS)},
                        {"beat_duration", cx_get_i16(r.data.data(), CX_MEASURE_BEAT_DURATION)},
                        {"composite", (r.data[CX_MEASURE_FLAG_BYTE] & 0x80) != 0},
                        {"flags", cx_get_u16(r.data.data(), CX_MEASURE_FLAGS)}});
  }
  score["measures"] = measures;
  json staves = json::array();
  const auto order = document.staves_in_order();
  for (std::size_t i = 0; i < order.size(); ++i)
    staves.push_back(staff_json(document, i + 1, order[i]));
  score["staves"] = staves;

  json channels = json::array();
  for (const auto& r : document.records(CX_TAG_CHANNEL_DEF)) {
    channels.push_back(channel_json(document, r.number));
  }
  score["channel_definitions"] = channels;

  json expressions = json::array();
  for (const auto& r : document.records(CX_TAG_EXPRESSION_DEF)) {
    const std::uint16_t category = r.data.size() >= 12 ? cx_get_u16(r.data.data(), 10) : 0;
    expressions.push_back(
        {{"number", r.number},
         {"text", r.data.size() >= 2 ? text_of_block(document, CX_TAG_EXPRESSION_TEXT,
                                                     cx_get_u16(r.data.data(), 0))
                                     : json(nullptr)},
         {"category", category},
         {"playback_type", category & 0xFF},
         {"words", words(r.data)}});
  }
  score["expressions"] = expressions;
  json assignments = json::array();
  for (const auto& r : document.records(CX_TAG_EXPRESSION_ASSIGN)) {
    if (r.data.size() < 12) continue;
    assignments.push_back({{"measure", r.number},
                           {"sub", r.sub},
                           {"definition", cx_get_u16(r.data.data(), CX_EXPRESSION_ASSIGN_DEF)},
                           {"staff", cx_get_i16(r.data.data(), CX_EXPRESSION_ASSIGN_STAFF)},
                           {"flags", cx_get_u16(r.data.data(), CX_EXPRESSION_ASSIGN_FLAGS)}});
  }
  score["expression_assignments"] = assignments;
  json styles = json::array();
  for (const auto& r : document.records(CX_TAG_STAFF_STYLE)) {
    styles.push_back({{"number", r.number}, {"words", words(r.data)}});
  }
  score["staff_styles"] = styles;
  json style_assignments = json::array();
  for (const auto& r : document.records(CX_TAG_STAFF_STYLE_ASSIGN)) {
    if (r.data.size() < CX_STAFF_STYLE_ASSIGN_SIZE) continue;
    const std::uint8_t* d = r.data.data();
    style_assignments.push_back(
        {{"number", r.number},
         {"sub", r.sub},
         {"style", cx_get_u16(d, CX_STAFF_STYLE_ASSIGN_STYLE)},
         {"start_measure", cx_get_u16(d, CX_STAFF_STYLE_ASSIGN_START_MEASURE)},
         {"start_position", cx_get_i32(d, CX_STAFF_STYLE_ASSIGN_START_POSITION)},
         {"end_measure", cx_get_u16(d, CX_STAFF_STYLE_ASSIGN_END_MEASURE)},
         {"end_position", cx_get_i32(d, CX_STAFF_STYLE_ASSIGN_END_POSITION)}});
  }
  score["staff_style_assignments"] = style_assignments;

  json records = json::object();
  for (const auto& r : document.all_records()) {
    records[tag_name(r.tag)].push_back(
        {{"number", r.number}, {"sub", r.sub}, {"hex", hex(r.data)}});
  }
  score["records"] = records;
  return score;
}

}  // namespace cantel_host
