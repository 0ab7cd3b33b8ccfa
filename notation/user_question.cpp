#include "user_question.h"

#include <cstddef>

#include "host_api.h"
#include "string_resources.h"

namespace rw::notation {
namespace {
constexpr std::size_t kQuestionCapacity = 1024;
}

bool AskYesNo(std::uint32_t stringId) {
  char16_t text[kQuestionCapacity];
  LoadStringResource(stringId, text, kQuestionCapacity);
  return host::CX_AlertMessage_UTF16(0, CX_MB_QUESTION_YESNO, 0, text, host::kVersion) == CX_ID_YES;
}

}  // namespace rw::notation
