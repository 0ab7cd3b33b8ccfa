// Shared by the files that define the exported CX_ functions.
#ifndef CANTEL_ENGINE_EXPORTS_H
#define CANTEL_ENGINE_EXPORTS_H

#include <type_traits>

#include "cantel/cantel.h"
#include "cantel_engine/document.h"

#define CX_EXPORT extern "C" CANTEL_ENGINE_API

// Each definition must have exactly the interface's type.
#define CX_CHECK_SIGNATURE(name) \
  static_assert(std::is_same_v<decltype(name), name##_t>, #name " differs from the interface")

#endif
