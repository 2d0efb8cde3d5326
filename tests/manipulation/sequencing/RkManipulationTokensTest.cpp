// The library's vocabulary: every qualified token is the namespace text followed directly by its local name.
#include <gtest/gtest.h>

#include "sequencing/RkManipulationTokens.h"

TEST(RkManipulationTokens, qualified_tokens_are_namespace_plus_local_name_and_irregular_ones_stay) {
  using namespace RkManipulation;
  EXPECT_EQ(ns.text(), "http://rkmanipulation.org/namespace/ct#");
  EXPECT_EQ(RkStandardManipulationFrameToken.text(), ns.text() + "standardManipulationFrame");
  EXPECT_EQ(RkStandardManipulationFrameToken.localName(), "standardManipulationFrame");
  EXPECT_EQ(RkReferencePoseManipulationOffsetStateToken, RkReferencePoseManipulationOffsetToken);
  EXPECT_EQ(RkManipulationFrameContainerVectorToken.localName(), "manipulationFrameVector");
  EXPECT_EQ(RkManipulationFrameXAxisSourceFrame.localName(), "manipulationFrameXAxisSourceFrame");
  EXPECT_EQ(RkManipulationTimeDurationTransitionEventToken.localName(), "timeDurationTransitionEvent");
  EXPECT_EQ(RkManipulationSequenceMapToken.localName(), "manipulationSequenceMap");
  EXPECT_EQ(RkSequenceMapToken.localName(), "sequenceMap");
  EXPECT_EQ(RkPrimaryFrameToken.text(), "primaryFrame");
  EXPECT_EQ(RkUndefinedFrameToken.namespaceUri(), "");
  EXPECT_EQ(RkManipulationVersionString, "3.0.0");
}
