// The axis rules shared by the relative offsets: which axis descriptions are usable (seeded random triads
// and pairs, and the named cases), how the manipulation frame is built from them, and the setters' limits.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "offsets/RkFrameRelativeManipulationOffset.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "offsets/RkObjectRelativeManipulationOffset.h"
#include "support/RkRoundTrip.h"
#include "xml/RkXmlReader.h"

namespace {

const std::string kValid;
const std::string kUndefined = "more than one axis is undefined";
const std::string kZeroAxis = "zero vector axis";
const std::string kNonorthogonal = "nonorthogonality detected";
const std::string kMixed = "three defined axes require the same source frame";
const RkU32 kSystem = RkRelativeManipulationOffset::SystemFrame;
const RkU32 kObject = RkRelativeManipulationOffset::ObjectFrame;
const RkU32 kUndefinedFrame = RkRelativeManipulationOffset::UndefinedFrame;

// Any concrete relative kind with the general rules; the link-relative one.
RkLinkRelativeManipulationOffset axes(const RkVector& x, RkU32 sx, const RkVector& y, RkU32 sy,
                                      const RkVector& z, RkU32 sz) {
  RkLinkRelativeManipulationOffset offset;
  offset.setManipulationFrameXAxis(x, sx);
  offset.setManipulationFrameYAxis(y, sy);
  offset.setManipulationFrameZAxis(z, sz);
  return offset;
}

struct Random {
  std::mt19937 engine{20240611};
  RkReal uniform(RkReal low, RkReal high) {
    return std::uniform_real_distribution<RkReal>(low, high)(engine);
  }
  // A uniformly distributed rotation.
  RkOrientation rotation() {
    std::normal_distribution<RkReal> normal;
    return RkOrientation(normal(engine), normal(engine), normal(engine), normal(engine));
  }
  RkVector vector() { return RkVector(uniform(-2, 2), uniform(-2, 2), uniform(-2, 2)); }
  RkU32 source() { return engine() % 2 ? kSystem : kObject; }
  // A length at least 1 % away from 1.
  RkReal nonUnitLength() {
    const RkReal length = uniform(0.1, 0.98);
    return engine() % 2 ? length : 1.0 / length;
  }
};

}  // namespace

TEST(RkRelativeManipulationOffset, three_defined_axes_must_be_a_right_handed_orthonormal_triad) {
  Random random;
  for (int trial = 0; trial < 500; ++trial) {
    SCOPED_TRACE(trial);
    const RkOrientation r = random.rotation();
    const RkVector x = r * RkVector::xVector(), y = r * RkVector::yVector(), z = r * RkVector::zVector();
    const RkU32 s = random.source();
    EXPECT_EQ(axes(x, s, y, s, z, s).validManipulationFrame(), kValid);
    // Left-handed, skewed, or scaled: refused.
    EXPECT_EQ(axes(x, s, y, s, -z, s).validManipulationFrame(), kNonorthogonal);
    EXPECT_EQ(axes(x, s, y + x * 1e-3, s, z, s).validManipulationFrame(), kNonorthogonal);
    EXPECT_EQ(axes(x * random.nonUnitLength(), s, y, s, z, s).validManipulationFrame(), kNonorthogonal);
    // Mixed sources are refused before the vectors are looked at, even a zero one.
    const RkU32 other = s == kSystem ? kObject : kSystem;
    EXPECT_EQ(axes(x, s, y, s, z, other).validManipulationFrame(), kMixed);
    EXPECT_EQ(axes(RkVector(), other, y, s, z, s).validManipulationFrame(), kMixed);
    EXPECT_EQ(axes(x, s, RkVector(), s, z, s).validManipulationFrame(), kZeroAxis);
  }
  // The named cases.
  EXPECT_EQ(axes(RkVector(1, 0, 0), kSystem, RkVector(0, 1, 0), kSystem, RkVector(0, 0, -1), kSystem)
                .validManipulationFrame(),
            kNonorthogonal);
  EXPECT_EQ(RkLinkRelativeManipulationOffset().validManipulationFrame(), kUndefined);
  EXPECT_EQ(axes(RkVector(1, 0, 0), kSystem, RkVector(), kUndefinedFrame, RkVector(), kUndefinedFrame)
                .validManipulationFrame(),
            kUndefined);
}

TEST(RkRelativeManipulationOffset,
     two_defined_axes_need_a_unit_first_named_axis_unless_their_sources_differ) {
  Random random;
  // Each pair in the order of its cross product (first-named axis first) and the slot of each.
  struct Pair {
    int first, second;
  };
  for (const Pair pair : {Pair{0, 1}, Pair{2, 0}, Pair{1, 2}}) {
    for (int trial = 0; trial < 200; ++trial) {
      SCOPED_TRACE(testing::Message() << "axes " << pair.first << "," << pair.second << " trial " << trial);
      const RkOrientation r = random.rotation();
      const RkVector unit[3] = {r * RkVector::xVector(), r * RkVector::yVector(), r * RkVector::zVector()};
      const RkU32 s = random.source();
      auto pairOf = [&](RkReal firstLength, RkReal secondLength, RkU32 firstSource, RkU32 secondSource) {
        RkVector vectors[3];
        RkU32 sources[3] = {kUndefinedFrame, kUndefinedFrame, kUndefinedFrame};
        vectors[pair.first] = unit[pair.first] * firstLength;
        vectors[pair.second] = unit[pair.second] * secondLength;
        sources[pair.first] = firstSource;
        sources[pair.second] = secondSource;
        return axes(vectors[0], sources[0], vectors[1], sources[1], vectors[2], sources[2])
            .validManipulationFrame();
      };
      // The second axis may have any length; the first must be of unit length.
      EXPECT_EQ(pairOf(1.0, 1.0, s, s), kValid);
      EXPECT_EQ(pairOf(1.0, random.uniform(0.01, 100), s, s), kValid);
      EXPECT_EQ(pairOf(random.nonUnitLength(), 1.0, s, s), kNonorthogonal);
      EXPECT_EQ(pairOf(1.0, 0.0, s, s), kZeroAxis);
      EXPECT_EQ(pairOf(0.0, 1.0, kSystem, kObject), kZeroAxis);
      // Different sources: no orthogonality test at all.
      EXPECT_EQ(pairOf(random.nonUnitLength(), random.uniform(0.01, 100), kSystem, kObject), kValid);
      const RkU32 mixed[2] = {kSystem, kObject};
      EXPECT_EQ(axes(random.vector(), mixed[trial % 2], random.vector(), mixed[1 - trial % 2], RkVector(),
                     kUndefinedFrame)
                    .validManipulationFrame(),
                kValid);
    }
  }
  // The named cases.
  EXPECT_EQ(axes(RkVector(2, 0, 0), kSystem, RkVector(0, 1, 0), kSystem, RkVector(), kUndefinedFrame)
                .validManipulationFrame(),
            kNonorthogonal);
  EXPECT_EQ(axes(RkVector(1, 0, 0), kSystem, RkVector(0, 5, 0), kSystem, RkVector(), kUndefinedFrame)
                .validManipulationFrame(),
            kValid);
  EXPECT_EQ(axes(RkVector(1, 1, 0), kSystem, RkVector(1, 0, 0), kSystem, RkVector(), kUndefinedFrame)
                .validManipulationFrame(),
            kNonorthogonal);
}

TEST(RkRelativeManipulationOffset,
     strict_settings_are_recognised_within_a_millionth_and_setters_ignore_bad_sources) {
  RkObjectRelativeManipulationOffset offset;
  offset.setSystemFrameAsManipulationFrame();
  EXPECT_EQ(offset.validManipulationFrame(), kValid);
  EXPECT_TRUE(offset.systemFrameAsManipulationFrame());
  EXPECT_FALSE(offset.objectFrameAsManipulationFrame());
  offset.setManipulationFrameYAxisVector(RkVector(5e-7, 1, 0));
  EXPECT_TRUE(offset.systemFrameAsManipulationFrame());
  offset.setManipulationFrameYAxisVector(RkVector(2e-6, 1, 0));
  EXPECT_FALSE(offset.systemFrameAsManipulationFrame());
  offset.setObjectFrameAsManipulationFrame();
  EXPECT_TRUE(offset.objectFrameAsManipulationFrame());
  EXPECT_FALSE(offset.systemFrameAsManipulationFrame());
  offset.setManipulationFrameZAxisSourceFrame(kSystem);
  EXPECT_FALSE(offset.objectFrameAsManipulationFrame());

  // A source of 3 or more changes nothing, neither source nor vector.
  offset.setManipulationFrameXAxisSourceFrame(3);
  offset.setManipulationFrameYAxis(RkVector(0, 0, 7), 4);
  offset.setManipulationFrameZAxis(RkVector(0, 0, 7), 0xFFFFFFFFu);
  EXPECT_EQ(offset.manipulationFrameXAxisSourceFrame(), kObject);
  EXPECT_EQ(offset.manipulationFrameYAxisVector(), RkXmlVector(0, 1, 0));
  EXPECT_EQ(offset.manipulationFrameZAxisSourceFrame(), kSystem);
  EXPECT_EQ(offset.manipulationFrameZAxisVector(), RkXmlVector(0, 0, 1));
  offset.setManipulationFrameXAxisSourceFrame(kUndefinedFrame);
  EXPECT_EQ(offset.manipulationFrameXAxisSourceFrame(), kUndefinedFrame);
}

TEST(RkRelativeManipulationOffset, manipulation_frame_sits_at_the_primary_origin_with_the_described_axes) {
  Random random;
  for (int trial = 0; trial < 200; ++trial) {
    SCOPED_TRACE(trial);
    const RkCoordinateSystemTransformation primary(random.vector(), random.rotation());
    const RkOrientation r = random.rotation();
    const RkVector x = r * RkVector::xVector(), y = r * RkVector::yVector(), z = r * RkVector::zVector();

    RkLinkRelativeManipulationOffset offset;
    offset.setSystemFrameAsManipulationFrame();
    EXPECT_TRUE(offset.calculateManipulationFrame(primary).approxEq(
        RkCoordinateSystemTransformation(primary.translation(), RkOrientation()), 1e-12));
    offset.setObjectFrameAsManipulationFrame();
    EXPECT_TRUE(offset.calculateManipulationFrame(primary).approxEq(primary, 1e-12));

    // System-frame axes are seen as given; object-frame ones turn with the primary frame. Whichever axis is
    // left undefined is filled in by the cross product of the other two.
    for (int undefinedAxis = 0; undefinedAxis < 3; ++undefinedAxis) {
      for (RkU32 s : {kSystem, kObject}) {
        RkU32 sources[3] = {s, s, s};
        sources[undefinedAxis] = kUndefinedFrame;
        const RkLinkRelativeManipulationOffset described = axes(x, sources[0], y, sources[1], z, sources[2]);
        ASSERT_EQ(described.validManipulationFrame(), kValid);
        const RkCoordinateSystemTransformation frame = described.calculateManipulationFrame(primary);
        const RkOrientation seen = s == kObject ? primary.orientation() * r : r;
        EXPECT_TRUE(frame.translation().approxEq(primary.translation(), 1e-12));
        EXPECT_TRUE(frame.orientation().approxEq(seen, 1e-9)) << undefinedAxis << " " << s;
      }
    }
    // goal = manipulation frame * relative offset, and relativeOffsetFor inverts it.
    const RkCoordinateSystemTransformation relative(random.vector(), random.rotation());
    RkLinkRelativeManipulationOffset composed = axes(x, kObject, y, kObject, z, kObject);
    composed.setRelativeOffset(relative);
    const RkCoordinateSystemTransformation goal = composed.goalFromPrimaryFrame(primary).placement();
    EXPECT_TRUE(goal.approxEq(primary * RkCoordinateSystemTransformation(RkVector(), r) * relative, 1e-9));
    EXPECT_TRUE(composed.relativeOffsetFor(goal, primary).approxEq(relative, 1e-9));
  }
}

TEST(RkRelativeManipulationOffset, documents_name_sources_and_frame_types_and_read_back_equal) {
  const char* xmlns = " xmlns=\"http://rkmanipulation.org/namespace/ct#\"";
  const std::string link =
      std::string("<linkRelativeManipulationOffset") + xmlns +
      "><relativeOffset><translation>0 0 0.05</translation>"
      "<orientation>1 0 0 0</orientation></relativeOffset>"
      "<manipulationFrameXAxisVector>1 0 0</manipulationFrameXAxisVector>"
      "<manipulationFrameXAxisSourceFrame>objectFrame</manipulationFrameXAxisSourceFrame>"
      "<manipulationFrameZAxisVector>0 0 1</manipulationFrameZAxisVector>"
      "<manipulationFrameZAxisSourceFrame>objectFrame</manipulationFrameZAxisSourceFrame>"
      "<linkFrameType>dhFrame</linkFrameType><linkIdentifiers>wrist_3_link</linkIdentifiers>"
      "</linkRelativeManipulationOffset>";
  RkLinkRelativeManipulationOffset offset;
  ASSERT_TRUE(RkXmlReader::readString(link, offset));
  EXPECT_EQ(offset.validManipulationFrame(), kValid);
  EXPECT_EQ(offset.linkFrameType(), 1u);
  EXPECT_EQ(offset.linkIdentifier(), "wrist_3_link");
  EXPECT_EQ(offset.manipulationFrameYAxisSourceFrame(), kUndefinedFrame);
  EXPECT_EQ(offset.relativeOffset().translation(), RkVector(0, 0, 0.05));
  std::string written;
  ASSERT_TRUE(RkXmlWriter::writeString(offset, written));
  EXPECT_NE(written.find("<manipulationFrameYAxisSourceFrame>undefinedFrame<"), std::string::npos) << written;
  EXPECT_TRUE(roundTrips(offset));

  RkFrameRelativeManipulationOffset frameRelative;
  frameRelative.setSystemFrameAsManipulationFrame();
  frameRelative.setFrameIndex(3);
  ASSERT_TRUE(RkXmlWriter::writeString(frameRelative, written));
  EXPECT_NE(written.find("<manipulationFrameZAxisSourceFrame>systemFrame<"), std::string::npos) << written;
  EXPECT_NE(written.find("<frameIndex>3</frameIndex>"), std::string::npos) << written;
  EXPECT_TRUE(roundTrips(frameRelative));
  // The index is part of what makes two offsets equal.
  RkFrameRelativeManipulationOffset other = frameRelative;
  other.setFrameIndex(2);
  EXPECT_FALSE(other == frameRelative);
}
