// Host data records: the base record class and the free record functions.
// Every function passes the interface version and answers true when the
// host answered non-zero.
#pragma once

#include <cstdint>
#include <memory>

namespace rw {

// A record object that owns its buffer for its whole life. Its virtual
// operations keep the host's slot order: Next, destructor, Create, Delete,
// Save, Load.
class CEData {
 public:
  virtual std::uint16_t Next();
  virtual ~CEData();
  virtual std::uint16_t Create() = 0;
  virtual std::uint16_t Delete(std::uint16_t number);
  virtual std::uint16_t Save(std::uint16_t number, std::uint32_t version);
  virtual std::uint16_t Load(std::uint16_t number, std::uint32_t version);

  CEData(const CEData&) = delete;
  CEData& operator=(const CEData&) = delete;

  std::uint8_t* Data() { return data_.get(); }
  const std::uint8_t* Data() const { return data_.get(); }
  std::uint32_t Size() const { return size_; }
  std::uint32_t Tag() const { return tag_; }
  std::uint16_t CurrentNumber() const { return currentNumber_; }

 protected:
  CEData() = default;
  // Derived records set their kind and size and get a zeroed buffer.
  void Allocate(std::uint32_t tag, std::uint32_t size);

  std::uint16_t currentNumber_ = 0;
  std::unique_ptr<std::uint8_t[]> data_;
  std::uint32_t tag_ = 0;
  std::uint32_t size_ = 0;
  std::uint16_t numberBlock_[2] = {0, 0};
};

// The buffer is zero-filled before every load, so that a record the host
// does not have never leaves stale bytes behind.
bool LoadRecord(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, void* buffer,
                std::uint32_t size);
bool LoadRecord3(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, std::uint16_t third,
                 void* buffer, std::uint32_t size);
bool LoadRecord1(std::uint32_t tag, std::uint16_t number, void* buffer, std::uint32_t size);
bool SaveRecord(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, const void* buffer,
                std::uint32_t size);
bool SaveRecord3(std::uint32_t tag, std::uint16_t number, std::uint16_t sub, std::uint16_t third,
                 const void* buffer, std::uint32_t size);
bool SaveRecord1(std::uint32_t tag, std::uint16_t number, const void* buffer, std::uint32_t size);
// Number CX_NUMBER_ANY lets the host choose (the sub-number is then 0);
// sub-number CX_SUBNUMBER_APPEND appends. The host's words are written back
// whether or not it created the record.
bool CreateRecord(std::uint32_t tag, std::uint16_t& number, std::uint16_t& sub, const void* buffer,
                  std::uint32_t size);
bool NextRecord(std::uint32_t tag, std::uint16_t& number, std::uint16_t& sub, void* buffer,
                std::uint32_t size);
bool DeleteRecord(std::uint32_t tag, std::uint16_t number, std::uint16_t sub);

// The 30-byte measure specification "SMOS" of one measure.
bool LoadMeasureRecord(std::uint16_t measure, void* buffer);
bool SaveMeasureRecord(std::uint16_t measure, const void* buffer);
// A text expression definition "TDOS" of a caller-given size (in and out).
bool LoadTDOSRecord(std::uint16_t number, void* buffer, std::uint32_t* size);

}  // namespace rw
