// The one way a load ends when a file would drive the reader outside its
// buffer, its tables or its time budget. Callers catch it as
// std::out_of_range; nothing else escapes a load.
#pragma once

#include <stdexcept>

namespace rw::groove {

class RangeCheckError : public std::out_of_range {
 public:
  explicit RangeCheckError(const char* what) : std::out_of_range(what) {}
};

}  // namespace rw::groove
