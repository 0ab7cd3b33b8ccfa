#include "records.h"

#include <cstring>

#include "host_api.h"

namespace rw {

using host::kVersion;

void CEData::Allocate(std::uint32_t tag, std::uint32_t size) {
  tag_ = tag;
  size_ = size;
  data_ = std::make_unique<std::uint8_t[]>(size);  // value-initialised: zeroed
}

CEData::~CEData() = default;

std::uint16_t CEData::Next() {
  return host::CX_NextEData(tag_, numberBlock_, data_.get(), size_, kVersion);
}

std::uint16_t CEData::Delete(std::uint16_t number) {
  numberBlock_[0] = number;
  numberBlock_[1] = 0;
  return host::CX_DeleteEData(tag_, numberBlock_, kVersion);
}

std::uint16_t CEData::Save(std::uint16_t number, std::uint32_t version) {
  if (!data_) return 0;
  numberBlock_[0] = number;
  numberBlock_[1] = 0;
  return host::CX_SaveEData(tag_, numberBlock_, data_.get(), size_, version);
}

std::uint16_t CEData::Load(std::uint16_t number, std::uint32_t version) {
  if (!data_) return 0;
  currentNumber_ = number;
  numberBlock_[0] = number;
  numberBlock_[1] = 0;
  std::uint32_t workingSize = size_;
  std::memset(data_.get(), 0, size_);
  return host::CX_LoadEData(tag_, numberBlock_, data_.get(), &workingSize, version);
}

namespace {
void Clear(void* buffer, std::uint32_t size) {
  if (buffer != nullptr) std::memset(buffer, 0, size);
}
}  // namespace

bool LoadRecord(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, void* buffer,
                std::uint32_t size) {
  std::uint16_t block[2] = {number, sub};
  std::uint32_t workingSize = size;
  Clear(buffer, size);
  return host::CX_LoadEData(tag, block, buffer, &workingSize, kVersion) != 0;
}

bool LoadRecord3(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, std::uint16_t third,
                 void* buffer, std::uint32_t size) {
  std::uint16_t block[3] = {number, sub, third};
  std::uint32_t workingSize = size;
  Clear(buffer, size);
  return host::CX_LoadEData(tag, block, buffer, &workingSize, kVersion) != 0;
}

bool LoadRecord1(std::uint32_t tag, std::uint16_t number, void* buffer, std::uint32_t size) {
  std::uint16_t block[1] = {number};
  std::uint32_t workingSize = size;
  Clear(buffer, size);
  return host::CX_LoadEData(tag, block, buffer, &workingSize, kVersion) != 0;
}

bool SaveRecord(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, const void* buffer,
                std::uint32_t size) {
  std::uint16_t block[2] = {number, sub};
  return host::CX_SaveEData(tag, block, buffer, size, kVersion) != 0;
}

bool SaveRecord3(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, std::uint16_t third,
                 const void* buffer, std::uint32_t size) {
  std::uint16_t block[3] = {number, sub, third};
  return host::CX_SaveEData(tag, block, buffer, size, kVersion) != 0;
}

bool SaveRecord1(std::uint32_t tag, std::uint16_t number, const void* buffer, std::uint32_t size) {
  std::uint16_t block[1] = {number};
  return host::CX_SaveEData(tag, block, buffer, size, kVersion) != 0;
}

bool CreateRecord(std::uint32_t tag, std::uint16_t& number, std::uint16_t& sub, const void* buffer,
                  std::uint32_t size) {
  if (number == CX_NUMBER_ANY) sub = 0;
  std::uint16_t block[2] = {number, sub};
  const bool created = host::CX_CreateEData(tag, block, buffer, size, kVersion) != 0;
  number = block[0];
  sub = block[1];
  return created;
}

bool NextRecord(std::uint32_t tag, std::uint16_t& number, std::uint16_t& sub, void* buffer,
                std::uint32_t size) {
  std::uint16_t block[2] = {number, sub};
  const bool found = host::CX_NextEData(tag, block, buffer, size, kVersion) != 0;
  number = block[0];
  sub = block[1];
  return found;
}

bool DeleteRecord(std::uint32_t tag, std::uint16_t number, std::uint16_t sub) {
  std::uint16_t block[2] = {number, sub};
  return host::CX_DeleteEData(tag, block, kVersion) != 0;
}

bool LoadMeasureRecord(std::uint16_t measure, void* buffer) {
  return LoadRecord(CX_TAG_MEASURE, measure, 0, buffer, CX_MEASURE_SIZE);
}

bool SaveMeasureRecord(std::uint16_t measure, const void* buffer) {
  return SaveRecord(CX_TAG_MEASURE, measure, 0, buffer, CX_MEASURE_SIZE);
}

bool LoadTDOSRecord(std::uint16_t number, void* buffer, std::uint32_t* size) {
  std::uint16_t block[2] = {number, 0};
  if (size == nullptr) return false;
  Clear(buffer, *size);
  return host::CX_LoadEData(CX_TAG_EXPRESSION_DEF, block, buffer, size, kVersion) != 0;
}

}  // namespace rw
