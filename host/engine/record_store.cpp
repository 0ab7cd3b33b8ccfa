#include "record_store.h"

namespace cantel_engine {

const Bytes* RecordStore::find(const RecordKey& key) const {
  auto it = records_.find(key);
  return it == records_.end() ? nullptr : &it->second;
}

void RecordStore::put(const RecordKey& key, Bytes data) { records_[key] = std::move(data); }

bool RecordStore::erase(const RecordKey& key) {
  auto it = records_.find(key);
  if (it == records_.end()) return false;
  it = records_.erase(it);
  // Sub-numbers are a dense sequence per number: close the gap.
  std::vector<std::pair<RecordKey, Bytes>> moved;
  while (it != records_.end() && it->first.tag == key.tag && it->first.number == key.number) {
    RecordKey lower = it->first;
    --lower.sub;
    moved.emplace_back(lower, std::move(it->second));
    it = records_.erase(it);
  }
  for (auto& [k, data] : moved) records_[k] = std::move(data);
  return true;
}

std::uint16_t RecordStore::lowest_free_number(std::uint32_t tag) const {
  std::uint32_t candidate = 1;
  for (auto it = records_.lower_bound(RecordKey{tag, 1, 0});
       it != records_.end() && it->first.tag == tag; ++it) {
    if (it->first.number > candidate) break;
    if (it->first.number == candidate) ++candidate;
  }
  return candidate >= 0xFFFF ? 0 : static_cast<std::uint16_t>(candidate);
}

std::optional<std::uint16_t> RecordStore::append_sub(std::uint32_t tag,
                                                     std::uint16_t number) const {
  auto it = records_.upper_bound(RecordKey{tag, number, 0xFFFF});
  if (it == records_.begin()) return 0;
  --it;
  if (it->first.tag != tag || it->first.number != number) return 0;
  if (it->first.sub >= 0xFFFE) return std::nullopt;
  return static_cast<std::uint16_t>(it->first.sub + 1);
}

std::optional<RecordKey> RecordStore::next(const RecordKey& from) const {
  auto it = records_.upper_bound(from);
  if (it == records_.end() || it->first.tag != from.tag) return std::nullopt;
  return it->first;
}

std::optional<RecordKey> RecordStore::previous(const RecordKey& from) const {
  auto it = records_.lower_bound(from);
  if (it == records_.begin()) return std::nullopt;
  --it;
  if (it->first.tag != from.tag) return std::nullopt;
  return it->first;
}

std::vector<RecordInfo> RecordStore::of_tag(std::uint32_t tag) const {
  std::vector<RecordInfo> out;
  for (auto it = records_.lower_bound(RecordKey{tag, 0, 0});
       it != records_.end() && it->first.tag == tag; ++it) {
    out.push_back({it->first.tag, it->first.number, it->first.sub, it->second});
  }
  return out;
}

std::vector<RecordInfo> RecordStore::all() const {
  std::vector<RecordInfo> out;
  for (const auto& [k, data] : records_) out.push_back({k.tag, k.number, k.sub, data});
  return out;
}

}  // namespace cantel_engine
