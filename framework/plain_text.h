// Tagged host text reduced to what a reader sees.
#pragma once

#include "eu16string.h"
#include "text_object.h"

namespace rw {

// Removes every complete caret tag "^name(arguments)"; the flat tag
// "^flat()" becomes the letter b. Null reads as empty.
eu16string MakePlainText(const char16_t* text);
eu16string MakePlainText(const CUTextObject& object);

}  // namespace rw
