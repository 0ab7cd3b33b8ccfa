// The document's records, keyed by (tag, number, sub-number) and walked in
// (number, sub-number) order within a tag.
#ifndef CANTEL_ENGINE_RECORD_STORE_H
#define CANTEL_ENGINE_RECORD_STORE_H

#include <cstdint>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "cantel_engine/document.h"

namespace cantel_engine {

struct RecordKey {
  std::uint32_t tag = 0;
  std::uint16_t number = 0;
  std::uint16_t sub = 0;
  auto operator<=>(const RecordKey&) const = default;
};

class RecordStore {
 public:
  const Bytes* find(const RecordKey& key) const;
  void put(const RecordKey& key, Bytes data);
  // Removes the record; the later sub-numbers of its number move down by one.
  bool erase(const RecordKey& key);
  // Lowest number from 1 that holds no record of the tag; 0 when all are taken.
  std::uint16_t lowest_free_number(std::uint32_t tag) const;
  // The sub-number after the last one of (tag, number); 0 when there is none.
  // std::nullopt when the sub-numbers are exhausted.
  std::optional<std::uint16_t> append_sub(std::uint32_t tag, std::uint16_t number) const;
  std::optional<RecordKey> next(const RecordKey& from) const;
  std::optional<RecordKey> previous(const RecordKey& from) const;
  std::vector<RecordInfo> of_tag(std::uint32_t tag) const;
  std::vector<RecordInfo> all() const;
  void clear() { records_.clear(); }

 private:
  std::map<RecordKey, Bytes> records_;
};

}  // namespace cantel_engine

#endif
