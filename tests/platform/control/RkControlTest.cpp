// End-effector placements and their interpolation, the end-effector kinds and their error measures, and
// end-effector sets read through the polymorphic container.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "control/RkEndEffectorPlacement.h"
#include "control/RkEndEffectorSet.h"
#include "control/RkFrameEndEffector.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "control/RkPointEndEffector.h"
#include "foundation/RkPrint.h"
#include "support/RkRoundTrip.h"
#include "xml/RkXmlReader.h"

namespace {

RkCoordinateSystemTransformation placementAt(RkReal x, RkReal y, RkReal z, RkReal angle,
                                             const RkVector& axis) {
  return RkCoordinateSystemTransformation(RkVector(x, y, z), RkOrientation::fromAngleAxis(angle, axis));
}

}  // namespace

TEST(RkEndEffectorPlacement, interpolation_is_linear_in_position_and_follows_the_arc_beyond_its_ends) {
  const RkEndEffectorPlacement from(placementAt(0, 0, 0, 0.2, RkVector::zVector()));
  const RkEndEffectorPlacement to(placementAt(1, 2, -2, 0.6, RkVector::zVector()));
  EXPECT_TRUE(
      RkEndEffectorPlacement::interpolation(from, to, 0.0).placement().approxEq(from.placement(), 1e-12));
  EXPECT_TRUE(
      RkEndEffectorPlacement::interpolation(from, to, 1.0).placement().approxEq(to.placement(), 1e-12));
  EXPECT_TRUE(RkEndEffectorPlacement::interpolation(from, to, 0.5)
                  .placement()
                  .approxEq(placementAt(0.5, 1, -1, 0.4, RkVector::zVector()), 1e-12));
  // Beyond either end the turn carries on about the same axis at the same rate.
  EXPECT_TRUE(RkEndEffectorPlacement::interpolation(from, to, 2.0)
                  .placement()
                  .approxEq(placementAt(2, 4, -4, 1.0, RkVector::zVector()), 1e-12));
  EXPECT_TRUE(RkEndEffectorPlacement::interpolation(from, to, -1.0)
                  .placement()
                  .approxEq(placementAt(-1, -2, 2, -0.2, RkVector::zVector()), 1e-12));

  Rk::Print::Capture capture;
  EXPECT_EQ(RkEndEffectorPlacement::interpolation(from, to, std::nan("")), from);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].level, 4);

  EXPECT_TRUE(roundTrips(to));
}

TEST(RkManipulatorEndEffectorPlacement, setting_an_entry_grows_the_list_with_identities_and_round_trips) {
  RkManipulatorEndEffectorPlacement placements;
  const RkCoordinateSystemTransformation third = placementAt(0.1, 0.2, 0.3, 1.0, RkVector(1, 1, 0));
  EXPECT_TRUE(placements.setOffsetInRelative(2, third));
  ASSERT_EQ(placements.offsetTransformations().size(), 3u);
  EXPECT_EQ(placements.offsetTransformations()[0], RkCoordinateSystemTransformation());
  EXPECT_EQ(placements.offsetTransformations()[1], RkCoordinateSystemTransformation());
  EXPECT_EQ(placements.offsetTransformations()[2], third);
  // Setting an entry that exists leaves the others and the size alone.
  const RkCoordinateSystemTransformation first = placementAt(-1, 0, 0, 0.0, RkVector::xVector());
  EXPECT_TRUE(placements.setOffsetInRelative(0, first));
  ASSERT_EQ(placements.offsetTransformations().size(), 3u);
  EXPECT_EQ(placements.offsetTransformations()[0], first);
  EXPECT_EQ(placements.offsetTransformations()[2], third);
  EXPECT_TRUE(roundTrips(placements));

  Rk::Print::Capture capture;
  EXPECT_FALSE(placements.setOffsetInRelative(0xffffffffu, first));
  EXPECT_FALSE(
      placements.setOffsetInRelative(RkManipulatorEndEffectorPlacement::kMaxEndEffectorCount, first));
  EXPECT_EQ(placements.offsetTransformations().size(), 3u);
  EXPECT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(RkManipulatorEndEffectorPlacement::nullObject().offsetTransformations().size(), 0u);
}

TEST(RkEndEffector, placement_errors_match_hand_computed_distances) {
  RkPointEndEffector point;
  // A 3-4-5 triangle; the point end effector ignores the half turn.
  const RkCoordinateSystemTransformation actual = placementAt(1, 2, 3, M_PI, RkVector::xVector());
  const RkCoordinateSystemTransformation goal = placementAt(4, 6, 3, 0.0, RkVector::xVector());
  EXPECT_NEAR(point.placementError(actual, goal), 5.0, 1e-12);
  EXPECT_NEAR(point.placementError(goal, actual), 5.0, 1e-12);

  RkFrameEndEffector frame;
  frame.setOrientationWeightLength(0.1);
  // 0.05 apart and 1.2 radians turned: sqrt(0.05^2 + (0.1 * 1.2)^2) = 0.13.
  EXPECT_NEAR(frame.placementError(placementAt(0.03, 0.04, 0, 1.5, RkVector::xVector()),
                                   placementAt(0, 0, 0, 0.3, RkVector::xVector())),
              0.13, 1e-12);
  // Turns of +2 and -2 radians are 4 radians apart the long way; the error takes the short way.
  frame.setOrientationWeightLength(1.0);
  EXPECT_NEAR(frame.placementError(placementAt(0, 0, 0, 2.0, RkVector::zVector()),
                                   placementAt(0, 0, 0, -2.0, RkVector::zVector())),
              2 * M_PI - 4.0, 1e-12);
  // Without a weight length only the positions count.
  frame.setOrientationWeightLength(0.0);
  EXPECT_NEAR(frame.placementError(actual, goal), 5.0, 1e-12);
  EXPECT_EQ(frame.placementError(goal, goal), 0.0);
}

TEST(RkEndEffectorSet, holds_both_kinds_through_the_container_and_reads_them_back) {
  RkPointEndEffector point;
  point.setLinkIdentifier("wrist");
  point.setMaximumAcceleration(2.5);
  RkFrameEndEffector frame;
  frame.setLinkIdentifier("tool flange");
  frame.setMaximumAcceleration(1.0);
  frame.setOrientationWeightLength(0.25);
  RkEndEffectorSet set;
  set.add(point);
  set.add(frame);
  ASSERT_EQ(set.size(), 2u);
  EXPECT_TRUE(roundTrips(set));

  std::string text;
  ASSERT_TRUE(RkXmlWriter::writeString(set, text));
  RkEndEffectorSet read;
  ASSERT_TRUE(RkXmlReader::readString(text, read));
  const auto* readPoint = dynamic_cast<const RkPointEndEffector*>(read.endEffector(0));
  const auto* readFrame = dynamic_cast<const RkFrameEndEffector*>(read.endEffector(1));
  ASSERT_TRUE(readPoint && readFrame);
  EXPECT_EQ(*readPoint, point);
  EXPECT_EQ(readFrame->linkIdentifier(), "tool flange");
  EXPECT_EQ(readFrame->orientationWeightLength(), 0.25);

  // The set holds copies: changing the original afterwards does not reach it.
  point.setMaximumAcceleration(9.0);
  EXPECT_EQ(set.endEffector(0)->maximumAcceleration(), 2.5);

  EXPECT_TRUE(roundTrips(RkEndEffectorContainer::nullObject()));
  EXPECT_EQ(RkEndEffectorSet::nullObject().size(), 0u);
}

TEST(RkEndEffectorSet, missing_and_unknown_entries_give_null_with_one_line_each) {
  const std::string document =
      "<endEffectorSet xmlns=\"http://rkmanipulation.org/namespace/ct#\"><endEffectors count=\"2\">"
      "<element><pointEndEffector><linkIdentifier>wrist</linkIdentifier></pointEndEffector></element>"
      "<element><laserEndEffector/></element></endEffectors></endEffectorSet>";
  Rk::Print::Capture capture;
  RkEndEffectorSet set;
  RkXmlReader::readString(document, set);
  ASSERT_EQ(set.size(), 2u);
  ASSERT_NE(set.endEffector(0), nullptr);
  EXPECT_EQ(set.endEffector(0)->linkIdentifier(), "wrist");

  capture.clear();
  EXPECT_EQ(set.endEffector(1), nullptr);
  EXPECT_EQ(set.endEffector(2), nullptr);
  EXPECT_EQ(set.endEffector(0xffffffffu), nullptr);
  ASSERT_EQ(capture.lines().size(), 3u);
  EXPECT_EQ(capture.lines()[0].text, "RkEndEffectorSet::endEffector: entry 1 holds no end effector\n");
  EXPECT_EQ(capture.lines()[1].text,
            "RkEndEffectorSet::endEffector: index 2 is beyond the set's 2 end effectors\n");
}
