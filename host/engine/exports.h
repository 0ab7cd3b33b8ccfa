// Shared by the files that define the exported CX_ functions.
#ifndef CANTEL_ENGINE_EXPORTS_H
#define CANTEL_ENGINE_EXPORTS_H

#include <type_traits>

#include "cantel/cantel.h"
#include "cantel_engine/document.h"

#if defined(_WIN32)
// Listed in the engine's module-definition file instead, so that a build
// can leave some out.
#define CX_EXPORT extern "C"
#else
#define CX_EXPORT extern "C" CANTEL_ENGINE_API
#endif

// Each definition must have exactly the interface's type.
#define CX_CHECK_SIGNATURE(name) \
  static_assert(std::is_same_v<decltype(name), name##_t>, #name " differs from the interface")

#endif
