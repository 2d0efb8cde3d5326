// The axis rules shared by the relative offsets: which axis descriptions are usable (seeded random triads and
// pairs, and the named cases), and how the manipulation frame and goal are built from them.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "offsets/RkLinkRelativeManipulationOffset.h"

namespace {

const RkU32 kUndefined = RkRelativeManipulationOffset::UndefinedFrame;
const RkU32 kSystem = RkRelativeManipulationOffset::SystemFrame;
const RkU32 kObject = RkRelativeManipulationOffset::ObjectFrame;
const std::string kNonorthogonal = "nonorthogonality detected";

// The verdict on axes x, y, z with sources s[0..2], through a concrete kind with the general rules.
std::string verdict(const RkVector& x, const RkVector& y, const RkVector& z, std::array<RkU32, 3> s) {
  RkLinkRelativeManipulationOffset offset;
  offset.setManipulationFrameXAxis(x, s[0]);
  offset.setManipulationFrameYAxis(y, s[1]);
  offset.setManipulationFrameZAxis(z, s[2]);
  return offset.validManipulationFrame();
}

struct Random {
  std::mt19937 engine{20240611};
  RkReal uniform(RkReal low, RkReal high) {
    return std::uniform_real_distribution<RkReal>(low, high)(engine);
  }
  RkOrientation rotation() {
    std::normal_distribution<RkReal> normal;
    return RkOrientation(normal(engine), normal(engine), normal(engine), normal(engine));
  }
  RkU32 source() { return engine() % 2 ? kSystem : kObject; }
  // A length at least 2 % away from 1.
  RkReal nonUnit() { return engine() % 2 ? uniform(0.1, 0.98) : uniform(1.02, 10); }
};

}  // namespace

TEST(RkRelativeManipulationOffset,
     three_defined_axes_must_be_a_right_handed_orthonormal_triad_of_one_source) {
  Random random;
  for (int trial = 0; trial < 300; ++trial) {
    const RkOrientation r = random.rotation();
    const RkVector x = r * RkVector::xVector(), y = r * RkVector::yVector(), z = r * RkVector::zVector();
    const RkU32 s = random.source(), other = s == kSystem ? kObject : kSystem;
    EXPECT_EQ(verdict(x, y, z, {s, s, s}), "") << trial;
    EXPECT_EQ(verdict(x, y, -z, {s, s, s}), kNonorthogonal) << trial;
    EXPECT_EQ(verdict(x, y + x * 1e-3, z, {s, s, s}), kNonorthogonal) << trial;
    EXPECT_EQ(verdict(x * random.nonUnit(), y, z, {s, s, s}), kNonorthogonal) << trial;
    EXPECT_EQ(verdict(x, RkVector(), z, {s, s, s}), "zero vector axis") << trial;
    // Mixed sources are refused before the vectors are looked at, even a zero one.
    EXPECT_EQ(verdict(RkVector(), y, z, {other, s, s}), "three defined axes require the same source frame");
  }
  EXPECT_EQ(verdict(RkVector(1, 0, 0), RkVector(0, 1, 0), RkVector(0, 0, -1), {kSystem, kSystem, kSystem}),
            kNonorthogonal);
  EXPECT_EQ(RkLinkRelativeManipulationOffset().validManipulationFrame(), "more than one axis is undefined");
}

TEST(RkRelativeManipulationOffset,
     two_defined_axes_need_a_unit_first_named_axis_unless_their_sources_differ) {
  Random random;
  // Each pair as its cross product names it: x then y, z then x, y then z.
  for (const auto& [first, second] : {std::pair{0, 1}, std::pair{2, 0}, std::pair{1, 2}}) {
    for (int trial = 0; trial < 100; ++trial) {
      const RkOrientation r = random.rotation();
      const RkVector unit[3] = {r * RkVector::xVector(), r * RkVector::yVector(), r * RkVector::zVector()};
      auto pair = [&](RkReal firstLength, RkReal secondLength, RkU32 firstSource, RkU32 secondSource) {
        RkVector v[3];
        std::array<RkU32, 3> s{kUndefined, kUndefined, kUndefined};
        v[first] = unit[first] * firstLength;
        v[second] = unit[second] * secondLength;
        s[first] = firstSource;
        s[second] = secondSource;
        return verdict(v[0], v[1], v[2], s);
      };
      const RkU32 s = random.source();
      SCOPED_TRACE(testing::Message() << first << second << " trial " << trial);
      EXPECT_EQ(pair(1, random.uniform(0.01, 100), s, s), "");
      EXPECT_EQ(pair(random.nonUnit(), 1, s, s), kNonorthogonal);
      EXPECT_EQ(pair(1, 0, s, s), "zero vector axis");
      // Different sources: no orthogonality test at all.
      EXPECT_EQ(pair(random.nonUnit(), random.uniform(0.01, 100), kSystem, kObject), "");
    }
  }
  EXPECT_EQ(verdict(RkVector(2, 0, 0), RkVector(0, 1, 0), RkVector(), {kSystem, kSystem, kUndefined}),
            kNonorthogonal);
  EXPECT_EQ(verdict(RkVector(1, 0, 0), RkVector(0, 5, 0), RkVector(), {kSystem, kSystem, kUndefined}), "");
  EXPECT_EQ(verdict(RkVector(1, 1, 0), RkVector(3, 0, 0), RkVector(), {kSystem, kObject, kUndefined}), "");
}

TEST(RkRelativeManipulationOffset, manipulation_frame_has_the_primary_origin_and_the_described_axes) {
  Random random;
  for (int trial = 0; trial < 100; ++trial) {
    const RkCoordinateSystemTransformation primary(RkVector(random.uniform(-1, 1), 0.5, 2),
                                                   random.rotation());
    const RkOrientation r = random.rotation();
    const RkVector axes[3] = {r * RkVector::xVector(), r * RkVector::yVector(), r * RkVector::zVector()};
    RkLinkRelativeManipulationOffset offset;
    offset.setSystemFrameAsManipulationFrame();
    EXPECT_TRUE(offset.calculateManipulationFrame(primary).approxEq(
        RkCoordinateSystemTransformation(primary.translation(), RkOrientation()), 1e-12));
    offset.setObjectFrameAsManipulationFrame();
    EXPECT_TRUE(offset.calculateManipulationFrame(primary).approxEq(primary, 1e-12));
    // Object-frame axes turn with the primary frame; an undefined axis is the cross product of the others.
    const int undefined = trial % 3;
    const RkU32 s = random.source();
    offset.setManipulationFrameXAxis(undefined == 0 ? RkVector() : axes[0], undefined == 0 ? kUndefined : s);
    offset.setManipulationFrameYAxis(undefined == 1 ? RkVector() : axes[1], undefined == 1 ? kUndefined : s);
    offset.setManipulationFrameZAxis(undefined == 2 ? RkVector() : axes[2], undefined == 2 ? kUndefined : s);
    const RkOrientation seen = s == kObject ? primary.orientation() * r : r;
    EXPECT_TRUE(offset.calculateManipulationFrame(primary).approxEq(
        RkCoordinateSystemTransformation(primary.translation(), seen), 1e-9));
    // goal = manipulation frame * relative offset, and relativeOffsetFor inverts it.
    const RkCoordinateSystemTransformation relative(RkVector(0.1, -0.2, 0.3), random.rotation());
    offset.setRelativeOffset(relative);
    const RkCoordinateSystemTransformation goal = offset.goalFromPrimaryFrame(primary).placement();
    EXPECT_TRUE(
        goal.approxEq(RkCoordinateSystemTransformation(primary.translation(), seen) * relative, 1e-9));
    EXPECT_TRUE(offset.relativeOffsetFor(goal, primary).approxEq(relative, 1e-9));
  }
}

TEST(RkRelativeManipulationOffset, strict_settings_allow_a_millionth_and_setters_ignore_sources_from_3_up) {
  RkLinkRelativeManipulationOffset offset;
  offset.setSystemFrameAsManipulationFrame();
  EXPECT_TRUE(offset.systemFrameAsManipulationFrame() && !offset.objectFrameAsManipulationFrame());
  offset.setManipulationFrameYAxisVector(RkVector(5e-7, 1, 0));
  EXPECT_TRUE(offset.systemFrameAsManipulationFrame());
  offset.setManipulationFrameYAxisVector(RkVector(2e-6, 1, 0));
  EXPECT_FALSE(offset.systemFrameAsManipulationFrame());
  offset.setObjectFrameAsManipulationFrame();
  offset.setManipulationFrameXAxisSourceFrame(3);
  offset.setManipulationFrameZAxis(RkVector(0, 0, 7), 0xFFFFFFFFu);
  EXPECT_TRUE(offset.objectFrameAsManipulationFrame());
}
