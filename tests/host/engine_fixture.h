// A fresh engine document per test, and short spellings of the calls.
#ifndef TESTS_HOST_ENGINE_FIXTURE_H
#define TESTS_HOST_ENGINE_FIXTURE_H

#include <gtest/gtest.h>

#include "cantel/cantel.h"
#include "cantel_engine/document.h"

// The engine's exports, declared from the interface's own table.
#define CX_DECLARE_IMPORT(name, result, params) name##_t name;
extern "C" {
CX_HOST_FUNCTIONS(CX_DECLARE_IMPORT)
}
#undef CX_DECLARE_IMPORT

class EngineTest : public ::testing::Test {
 protected:
  void SetUp() override { doc.reset(); }
  cantel_engine::Document& doc = cantel_engine::document();
  static constexpr uint32_t v = CX_INTERFACE_VERSION;
};

#endif
