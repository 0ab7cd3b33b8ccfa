// The binding meets a real host module that lacks some of its exports.
#include <cantel_engine/document.h>
#include <gtest/gtest.h>

#include "host_api.h"

namespace {

using rw::host::kVersion;

TEST(AHostLackingExports, GivesTheFallbacksAndStillServesWhatItHas) {
  auto& doc = cantel_engine::document();
  doc.reset();
  doc.add_measures(2, {3, 1024, false, 0});

  EXPECT_NE(rw::host::FindHostModule(), nullptr);
  EXPECT_EQ(rw::host::CX_GetMaxLayers(kVersion), 4);
  EXPECT_EQ(rw::host::CX_FontNameToNum_UTF16(u"Times New Roman", kVersion), 0xFFFF);
  EXPECT_EQ(rw::host::CX_GetShowLayer(0, kVersion), 0);
  EXPECT_EQ(rw::host::CX_ProcessMidiDataNoSplit(nullptr, kVersion), 0xFFFFFFFFu);
  EXPECT_EQ(rw::host::CX_GetMeasureDuration(0, 2, kVersion), 3 * 1024);
}

}  // namespace
