// The Bezier corner curve: its worked numbers, the one-way validity latch, the acceleration test, the
// quadratic orientation scheme, and that nothing but its class reaches XML.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "foundation/RkPrint.h"
#include "support/RkRoundTrip.h"
#include "waypoints/RkBezierInterpolator.h"
#include "waypoints/RkWaypointInterpolatorContainer.h"
#include "xml/RkXmlTokens.h"

namespace {

// A right-angle turn of unit legs, run at rate 2 / (2 * 1) = 1 from time 0; set up after points with
// earlierStart, which may make it invalid.
RkBezierInterpolator rightAngleCorner(const RkVector& earlierStart = RkVector(0, 0, 0)) {
  RkBezierInterpolator curve;
  curve.setPoints(earlierStart, RkVector(1, 0, 0), RkVector(1, 1, 0));
  curve.setPoints(RkVector(0, 0, 0), RkVector(1, 0, 0), RkVector(1, 1, 0));
  curve.setSpeeds(2.0, 7.0);
  curve.setStartTime(0.0);
  return curve;
}

}  // namespace

TEST(RkBezierInterpolator, worked_corner_gives_its_points_velocities_and_range) {
  Rk::Print::Capture capture;
  const RkBezierInterpolator curve = rightAngleCorner();
  RkVector position, velocity;
  ASSERT_TRUE(curve.interpolate(0.5, position, velocity));
  EXPECT_TRUE(position.approxEq(RkVector(0.75, 0.25, 0), 1e-15));
  EXPECT_TRUE(velocity.approxEq(RkVector(1, 1, 0), 1e-15));
  ASSERT_TRUE(curve.interpolate(1.0, position, velocity));
  EXPECT_TRUE(position.approxEq(RkVector(1, 1, 0), 1e-15));
  EXPECT_TRUE(capture.lines().empty());
  // Outside the curve the position form says so at level 7, the orientation form fails silently, and
  // neither touches its outputs.
  const RkVector before = position;
  RkOrientation orientation = RkOrientation::fromAngleAxis(0.3, RkVector::zVector());
  const RkOrientation orientationBefore = orientation;
  for (RkReal outside : {1.0001, -0.0001, std::numeric_limits<RkReal>::quiet_NaN()}) {
    EXPECT_FALSE(curve.interpolate(outside, position, velocity)) << outside;
    EXPECT_FALSE(curve.interpolate(outside, orientation)) << outside;
  }
  ASSERT_EQ(capture.lines().size(), 3u);
  EXPECT_EQ(capture.lines()[2].level, 7);
  EXPECT_EQ(capture.text(),
            "Bezier interpolator out of range\nBezier interpolator out of range\n"
            "Bezier interpolator out of range\n");
  EXPECT_EQ(position, before);
  EXPECT_EQ(orientation, orientationBefore);

  // Once given coincident start and corner, it stays invalid after good points.
  capture.clear();
  const RkBezierInterpolator latched = rightAngleCorner(RkVector(1, 0, 0));
  EXPECT_FALSE(latched.interpolate(0.5, position, velocity));
  EXPECT_FALSE(latched.interpolate(0.5, orientation));
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].level, 7);
  EXPECT_EQ(capture.lines()[1].level, 4);
  EXPECT_EQ(capture.text(), "Bezier interpolator invalid\nBezier interpolator invalid\n");
}

TEST(RkBezierInterpolator, needs_delay_when_the_start_speed_asks_more_than_the_acceleration_bound) {
  // |B''| = 2 |P0 - 2 P1 + P2| = 2 sqrt(2) at rate 1: the bound suffices from 2 sqrt(2) up.
  RkBezierInterpolator curve = rightAngleCorner();
  curve.setMaxAcceleration(2.8);
  EXPECT_TRUE(curve.needsDelay());
  curve.setMaxAcceleration(2.9);
  EXPECT_FALSE(curve.needsDelay());
  // A straight, evenly spaced curve has no second derivative: never a delay, however fast.
  RkBezierInterpolator straight;
  straight.setPoints(RkVector(0, 0, 0), RkVector(1, 0, 0), RkVector(2, 0, 0));
  straight.setSpeeds(1e6, 1e6);
  straight.setMaxAcceleration(1.0);
  EXPECT_FALSE(straight.needsDelay());
}

TEST(RkBezierInterpolator, random_curves_run_from_start_to_end_with_velocity_per_curve_parameter) {
  std::mt19937 random(20240611);
  std::uniform_real_distribution<RkReal> coordinate(-1.0, 1.0), speed(0.05, 3.0), start(-5.0, 5.0),
      inside(0.05, 0.95);
  auto point = [&] { return RkVector(coordinate(random), coordinate(random), coordinate(random)); };
  for (int trial = 0; trial < 200; ++trial) {
    const RkVector p0 = point(), p1 = point(), p2 = point();
    RkBezierInterpolator curve;
    curve.setPoints(p0, p1, p2);
    curve.setSpeeds(speed(random), 0.0);
    const RkReal startTime = start(random), rate = curve.parameterRate();
    curve.setStartTime(startTime);
    RkVector position, velocity, ahead, behind;
    ASSERT_TRUE(curve.interpolate(startTime, position, velocity));
    EXPECT_TRUE(position.approxEq(p0, 1e-12) && velocity.approxEq((p1 - p0) * 2.0, 1e-12)) << trial;
    // The last time whose parameter still rounds into the curve.
    RkReal endTime = startTime + 1.0 / rate;
    while ((endTime - startTime) * rate > 1.0) endTime = std::nextafter(endTime, -HUGE_VAL);
    ASSERT_TRUE(curve.interpolate(endTime, position, velocity)) << trial;
    EXPECT_TRUE(position.approxEq(p2, 1e-9)) << trial;
    // A central difference in the curve parameter, exact for a quadratic up to rounding.
    const RkReal time = startTime + inside(random) / rate, step = 1e-3 / rate;
    ASSERT_TRUE(curve.interpolate(time + step, ahead, position) &&
                curve.interpolate(time - step, behind, position));
    ASSERT_TRUE(curve.interpolate(time, position, velocity));
    const RkReal parameterStep = ((time + step) - startTime) * rate - ((time - step) - startTime) * rate;
    EXPECT_TRUE(velocity.approxEq((ahead - behind) / parameterStep, 1e-6)) << trial;
  }
}

TEST(RkBezierInterpolator, orientation_follows_the_quadratic_scheme_of_slerps) {
  const RkOrientation o0 = RkOrientation::fromAngleAxis(0.4, RkVector(1, 2, 3));
  const RkOrientation o1 = RkOrientation::fromAngleAxis(2.5, RkVector(0, 1, 0));
  const RkOrientation o2(-0.2, 0.7, -0.1, 0.6);  // a negative scalar part: the arcs must still be short
  RkBezierInterpolator curve = rightAngleCorner();
  curve.setOrientations(o0, o1, o2);
  RkOrientation orientation;
  for (RkReal s : {0.0, 0.25, 0.5, 0.8, 1.0}) {
    ASSERT_TRUE(curve.interpolate(s, orientation));
    const Eigen::Quaterniond towardsCorner = o0.eigen().slerp(s, o1.eigen());
    const Eigen::Quaterniond fromCorner = o1.eigen().slerp(s, o2.eigen());
    EXPECT_TRUE(orientation.approxEq(RkOrientation(towardsCorner.slerp(s, fromCorner)), 1e-12)) << s;
  }
  EXPECT_TRUE(orientation.approxEq(o2, 1e-12));
  // Kept for users: the rotation taking the end orientation back to the start one, as axis times angle.
  const RkVector rotation = curve.rotationVector();
  EXPECT_TRUE((RkOrientation::fromAngleAxis(rotation.norm(), rotation) * o2).approxEq(o0, 1e-12));
}

TEST(RkWaypointInterpolatorContainer, holds_a_bezier_interpolator_whose_configuration_stays_out_of_xml) {
  RkWaypointInterpolatorContainer container;
  ASSERT_TRUE(RkXmlReader::readString(std::string("<waypointInterpolatorContainer xmlns=\"") +
                                          RkXml::RkNamespaceUri +
                                          "\"><bezierInterpolator/></waypointInterpolatorContainer>",
                                      container));
  ASSERT_NE(dynamic_cast<const RkBezierInterpolator*>(container.element()), nullptr);
  // Configured differently from a fresh one, yet equal to it and written the same.
  const RkBezierInterpolator configured = rightAngleCorner();
  EXPECT_TRUE(configured == RkBezierInterpolator());
  std::string written, fresh;
  ASSERT_TRUE(RkXmlWriter::writeString(configured, written) &&
              RkXmlWriter::writeString(RkBezierInterpolator(), fresh));
  EXPECT_EQ(written, fresh);
  container.setElement(configured);
  EXPECT_TRUE(roundTrips(container));
}
