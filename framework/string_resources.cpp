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

std::u16string Substituted(std::u16string_view text, std::initializer_list<std::u16string> args) {
  std::u16string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t next = i + 1 < text.size() ? text[i + 1] : u'\0';
    const auto index = static_cast<std::size_t>(next - u'1');
    if (text[i] == u'%' && next >= u'1' && next <= u'9' && index < args.size()) {
      out += *(args.begin() + index);
      ++i;
    } else {
      out += text[i];
    }
  }
  return out;
}

std::u16string StringResource(std::uint32_t id, std::initializer_list<std::u16string> args) {
  return Substituted(StringResource(id), args);
}

std::u16string Widened(std::string_view text) {
  std::u16string out;
  for (const char c : text) out += static_cast<char16_t>(static_cast<unsigned char>(c));
  return out;
}

void LoadStringField(std::uint32_t id, char16_t* field, std::size_t capacity) {
  if (field == nullptr || capacity == 0) return;
  std::fill(field, field + capacity, char16_t{0});
  LoadStringResource(id, field, capacity);
}

}  // namespace rw
