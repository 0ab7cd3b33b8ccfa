#include "string_resources.h"

#include <algorithm>
#include <climits>

#include "platform.h"

namespace rw {
namespace {
constexpr std::size_t kStringCapacity = 1024;

int CapacityArgument(std::size_t capacity) {
  return static_cast<int>(std::min<std::size_t>(capacity, INT_MAX));
}
}  // namespace

char16_t* LoadStringResource(std::uint32_t id, char16_t* buffer, std::size_t capacity) {
  if (buffer == nullptr || capacity == 0) return nullptr;
  buffer[0] = 0;
  platform::LoadStringW(platform::OwnModule(), id, buffer, CapacityArgument(capacity));
  buffer[capacity - 1] = 0;
  return buffer;
}

char* LoadStringResourceA(std::uint32_t id, char* buffer, std::size_t capacity) {
  if (buffer == nullptr || capacity == 0) return nullptr;
  buffer[0] = 0;
  platform::LoadStringA(platform::OwnModule(), id, buffer, CapacityArgument(capacity));
  buffer[capacity - 1] = 0;
  return buffer;
}

std::u16string StringResource(std::uint32_t id) {
  char16_t text[kStringCapacity];
  return LoadStringResource(id, text, kStringCapacity);
}

void LoadStringField(std::uint32_t id, char16_t* field, std::size_t capacity) {
  if (field == nullptr || capacity == 0) return;
  std::fill(field, field + capacity, char16_t{0});
  LoadStringResource(id, field, capacity);
}

}  // namespace rw
