#include "user_messages.h"

#include <string>

#include "host_api.h"
#include "string_resources.h"

namespace rw {

std::uint16_t ShowMessage(std::uint32_t id, std::uint16_t style) {
  return host::CX_AlertMessage_UTF16(0, style, 0, StringResource(id).c_str(), host::kVersion);
}

std::uint16_t ShowMessage(std::uint32_t id, std::uint16_t style, std::u16string_view argument) {
  std::u16string message = StringResource(id);
  if (const std::size_t at = message.find(u"%s"); at != std::u16string::npos) {
    message.replace(at, 2, argument);
  }
  return host::CX_AlertMessage_UTF16(0, style, 0, message.c_str(), host::kVersion);
}

bool AskYesNo(std::uint32_t id) { return ShowMessage(id, CX_MB_QUESTION_YESNO) == CX_ID_YES; }

}  // namespace rw
