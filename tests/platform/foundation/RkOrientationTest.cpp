// Orientation interpolation against the rotation between its ends, on random orientations given with
// either sign: both must take the shorter way.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "foundation/RkOrientation.h"

TEST(RkOrientation, interpolation_turns_a_fraction_of_the_shortest_rotation_between_its_ends) {
  std::mt19937 random(7031);
  std::normal_distribution<RkReal> component(0.0, 1.0);
  std::uniform_real_distribution<RkReal> fraction(0.0, 1.0);
  auto orientation = [&] {
    return RkOrientation(component(random), component(random), component(random), component(random));
  };
  for (int trial = 0; trial < 500; ++trial) {
    const RkOrientation from = orientation(), to = orientation();
    const RkOrientation flipped(-to.w(), -to.x(), -to.y(), -to.z());
    RkReal angle = -1.0;
    RkVector axis;
    RkOrientation::angleAxisBetween(from, flipped, angle, axis);
    ASSERT_TRUE(angle >= 0.0 && angle <= M_PI + 1e-12 && std::fabs(axis.norm() - 1.0) < 1e-12) << trial;
    EXPECT_TRUE((RkOrientation::fromAngleAxis(angle, axis) * from).approxEq(to, 1e-9)) << trial;
    const RkReal s = fraction(random);
    const RkOrientation expected = RkOrientation::fromAngleAxis(s * angle, axis) * from;
    EXPECT_TRUE(RkOrientation::interpolation(from, to, s).approxEq(expected, 1e-9)) << trial;
    EXPECT_TRUE(RkOrientation::interpolation(from, flipped, s).approxEq(expected, 1e-9)) << trial;
  }
}
