// UTF-16 paths as the plug-in holds them, turned into paths this system opens.
#pragma once

#include <filesystem>
#include <string>

namespace rw::platform {

// UTF-8 of a zero-terminated UTF-16 path, with '\' turned into '/'.
std::string NativePath(const char16_t* path);
std::u16string Utf8ToUtf16(const std::string& text);
// Well-formed UTF-8: no stray or missing continuation bytes, no overlong
// forms, no surrogates, nothing above U+10FFFF.
bool IsValidUtf8(const std::string& text);

}  // namespace rw::platform
