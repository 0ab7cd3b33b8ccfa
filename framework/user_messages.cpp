#include "user_messages.h"

#include <string>

#include "host_api.h"
#include "string_resources.h"

namespace rw {
namespace {
constexpr std::size_t kMessageCapacity = 1024;
}

std::uint16_t ShowMessage(std::uint32_t id, std::uint16_t style) {
  char16_t text[kMessageCapacity];
  LoadStringResource(id, text, kMessageCapacity);
  return host::CX_AlertMessage_UTF16(0, style, 0, text, host::kVersion);
}

std::uint16_t ShowMessage(std::uint32_t id, std::uint16_t style, std::u16string_view argument) {
  char16_t text[kMessageCapacity];
  LoadStringResource(id, text, kMessageCapacity);
  std::u16string message(text);
  if (const std::size_t at = message.find(u"%s"); at != std::u16string::npos) {
    message.replace(at, 2, argument);
  }
  return host::CX_AlertMessage_UTF16(0, style, 0, message.c_str(), host::kVersion);
}

bool AskYesNo(std::uint32_t id) { return ShowMessage(id, CX_MB_QUESTION_YESNO) == CX_ID_YES; }

}  // namespace rw
