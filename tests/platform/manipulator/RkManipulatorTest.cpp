// Manipulator descriptions and states: their documents, link lookup and the link frames of a planar arm.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "foundation/RkPrint.h"
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkManipulatorActivePositionState.h"
#include "manipulator/RkPositionState.h"
#include "manipulator/RkSimpleStatedSystem.h"
#include "support/RkRoundTrip.h"
#include "xml/RkXmlReader.h"

namespace {

RkCoordinateSystemTransformation shift(RkReal x, RkReal y, RkReal z) {
  return RkCoordinateSystemTransformation(RkVector(x, y, z), RkOrientation());
}

RkCoordinateSystemTransformation turnZ(RkReal angle) {
  return RkCoordinateSystemTransformation(RkVector(),
                                          RkOrientation::fromAngleAxis(angle, RkVector::zVector()));
}

RkPositionState::RealVector reals(std::initializer_list<RkReal> values) {
  RkPositionState::RealVector vector;
  for (RkReal value : values) vector.pushBack(value);
  return vector;
}

RkPositionState stateAt(std::initializer_list<RkReal> positions) {
  RkPositionState state;
  state.setJointPositions(reals(positions));
  return state;
}

// Two revolute joints about z, links 1 and 0.5 long; each link's DH frame sits at its far end.
RkIndividualManipulator planarArm() {
  RkManipulatorLink shoulder;
  shoulder.setIdentifier("shoulder");
  shoulder.setDhOffset(shift(1.0, 0, 0));
  RkManipulatorLink elbow;
  elbow.setIdentifier("elbow");
  elbow.setParentIndex(0);
  elbow.setFixedTransformation(shift(1.0, 0, 0));
  elbow.setDhOffset(shift(0.5, 0, 0));
  RkIndividualManipulator arm;
  arm.setName("planar");
  arm.addLink(shoulder);
  arm.addLink(elbow);
  return arm;
}

}  // namespace

TEST(RkManipulatorDocuments, position_states_and_manipulators_round_trip) {
  RkPositionState state;
  state.setBasePlacement(
      RkCoordinateSystemTransformation(RkVector(2, -1, 0.25), RkOrientation(0.5, 0.5, 0.5, 0.5)));
  state.setJointPositions(reals({0.1, -2.5, 1e-9}));
  state.setJointVelocities(reals({0, 0.75, -3}));
  EXPECT_TRUE(roundTrips(state));

  RkIndividualManipulator arm = planarArm();
  arm.setBasePlacement(shift(0, 0, 0.5));
  RkManipulatorLink slide;
  slide.setIdentifier("gripper slide");
  slide.setParentIndex(1);
  slide.setJointType(RkManipulatorLink::JointType::Prismatic);
  slide.setJointAxis(RkVector(0, 1, 0));
  slide.setFixedTransformation(
      RkCoordinateSystemTransformation(RkVector(0.5, 0, 0), RkOrientation(0, 0, 0, 1)));
  arm.addLink(slide);
  EXPECT_TRUE(roundTrips(arm));
  EXPECT_TRUE(roundTrips(arm.links()[2]));

  std::string text;
  ASSERT_TRUE(RkXmlWriter::writeString(arm, text));
  EXPECT_NE(text.find("<jointType>prismatic</jointType>"), std::string::npos) << text;
}

TEST(RkIndividualManipulator, link_lookup_finds_by_identifier_and_gives_null_silently_for_an_unknown_one) {
  const RkIndividualManipulator arm = planarArm();
  ASSERT_NE(arm.link("elbow"), nullptr);
  EXPECT_EQ(arm.link("elbow"), &arm.links()[1]);
  Rk::Print::Capture capture;
  EXPECT_EQ(arm.link("wrist"), nullptr);
  EXPECT_EQ(arm.link(""), nullptr);
  EXPECT_TRUE(capture.lines().empty());
}

TEST(RkIndividualManipulator, planar_arm_frames_match_hand_computed_ones) {
  const RkIndividualManipulator arm = planarArm();
  RkManipulatorActivePositionState active(arm);
  struct Case {
    RkReal shoulder, elbow;
  };
  for (const Case& joints : {Case{0, 0}, Case{M_PI / 2, 0}, Case{M_PI / 2, -M_PI / 2}, Case{0.3, 0.7}}) {
    SCOPED_TRACE(testing::Message() << joints.shoulder << ", " << joints.elbow);
    const RkPositionState state = stateAt({joints.shoulder, joints.elbow});
    ASSERT_TRUE(active.setPositionState(state));
    const RkReal c0 = std::cos(joints.shoulder), s0 = std::sin(joints.shoulder);
    const RkReal c01 = std::cos(joints.shoulder + joints.elbow),
                 s01 = std::sin(joints.shoulder + joints.elbow);
    RkCoordinateSystemTransformation shoulderPrimary, shoulderDh, elbowPrimary, elbowDh, byLink;
    ASSERT_TRUE(arm.primaryFrame("shoulder", active, shoulderPrimary));
    ASSERT_TRUE(arm.dhFrame("shoulder", active, shoulderDh));
    ASSERT_TRUE(arm.primaryFrame("elbow", active, elbowPrimary));
    ASSERT_TRUE(arm.dhFrame("elbow", active, elbowDh));
    EXPECT_TRUE(shoulderPrimary.approxEq(turnZ(joints.shoulder), 1e-12));
    EXPECT_TRUE(shoulderDh.approxEq(shift(c0, s0, 0) * turnZ(joints.shoulder), 1e-12));
    EXPECT_TRUE(elbowPrimary.approxEq(shift(c0, s0, 0) * turnZ(joints.shoulder + joints.elbow), 1e-12));
    EXPECT_TRUE(elbowDh.approxEq(
        shift(c0 + 0.5 * c01, s0 + 0.5 * s01, 0) * turnZ(joints.shoulder + joints.elbow), 1e-12));
    // The link asked directly agrees with the lookup by identifier.
    ASSERT_TRUE(arm.link("elbow")->dhFrame(active, byLink));
    EXPECT_EQ(byLink, elbowDh);
    ASSERT_TRUE(arm.links()[0].primaryFrame(active, byLink));
    EXPECT_EQ(byLink, shoulderPrimary);
  }
}

TEST(RkIndividualManipulator, frames_follow_the_base_the_mounting_and_prismatic_joints) {
  RkIndividualManipulator arm = planarArm();
  arm.setBasePlacement(shift(0, 0, 0.5));
  RkManipulatorLink slide;
  slide.setIdentifier("slide");
  slide.setParentIndex(1);
  slide.setJointType(RkManipulatorLink::JointType::Prismatic);
  // Only the axis's direction counts.
  slide.setJointAxis(RkVector(0, 0, -4));
  slide.setFixedTransformation(shift(0.5, 0, 0));
  arm.addLink(slide);

  // The mobile base stands at (2, 0, 0), turned a quarter about z: (x, y, z) goes to (2 - y, x, z).
  RkPositionState state = stateAt({M_PI / 2, -M_PI / 2, 0.2});
  state.setBasePlacement(RkCoordinateSystemTransformation(
      RkVector(2, 0, 0), RkOrientation::fromAngleAxis(M_PI / 2, RkVector::zVector())));
  RkManipulatorActivePositionState active(arm);
  ASSERT_TRUE(active.setPositionState(state));
  const RkCoordinateSystemTransformation base = shift(2, 0, 0) * turnZ(M_PI / 2);
  EXPECT_TRUE(arm.manipulatorFrame(active).approxEq(shift(2, 0, 0.5) * turnZ(M_PI / 2), 1e-12));
  EXPECT_TRUE(active.manipulatorFrame().approxEq(arm.manipulatorFrame(active), 1e-12));
  // In the manipulator frame the elbow tip is at (0.5, 1, 0) facing +x; the slide drops 0.2 from it.
  RkCoordinateSystemTransformation tip, slideFrame;
  ASSERT_TRUE(arm.dhFrame("elbow", active, tip));
  ASSERT_TRUE(arm.primaryFrame("slide", active, slideFrame));
  EXPECT_TRUE(tip.approxEq(base * shift(0.5, 1, 0.5), 1e-12));
  EXPECT_TRUE(slideFrame.approxEq(base * shift(0.5, 1, 0.3), 1e-12));
  EXPECT_TRUE(slideFrame.translation().approxEq(RkVector(1, 0.5, 0.3), 1e-12));

  // A new state gives new frames, and the manipulator frame follows its base.
  const RkPositionState home = stateAt({0, 0, 0});
  ASSERT_TRUE(active.setPositionState(home));
  ASSERT_TRUE(arm.primaryFrame("slide", active, slideFrame));
  EXPECT_TRUE(slideFrame.approxEq(shift(1.5, 0, 0.5), 1e-12));
  EXPECT_TRUE(active.manipulatorFrame().approxEq(shift(0, 0, 0.5), 1e-12));
}

TEST(RkManipulatorActivePositionState, states_that_do_not_fit_give_no_frames_and_say_why_once) {
  const RkIndividualManipulator arm = planarArm();
  const RkIndividualManipulator other = planarArm();
  RkManipulatorActivePositionState active(arm);
  Rk::Print::Capture capture;
  RkCoordinateSystemTransformation frame = shift(9, 9, 9);
  // Nothing set yet: no joint positions.
  EXPECT_FALSE(arm.primaryFrame("shoulder", active, frame));
  const RkPositionState tooShort = stateAt({0.1});
  EXPECT_FALSE(active.setPositionState(tooShort));
  EXPECT_FALSE(active.valid());
  EXPECT_FALSE(arm.dhFrame("elbow", active, frame));
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[1].text,
            "RkManipulatorActivePositionState::dhFrame: manipulator \"planar\" has 2 links but the state "
            "gives 1 joint positions\n");

  const RkPositionState roomy = stateAt({0.1, 0.2, 0.3});
  ASSERT_TRUE(active.setPositionState(roomy));
  capture.clear();
  EXPECT_FALSE(other.primaryFrame("shoulder", active, frame));
  EXPECT_FALSE(other.links()[0].primaryFrame(active, frame));
  EXPECT_FALSE(arm.primaryFrame("wrist", active, frame));
  EXPECT_FALSE(active.primaryFrame(2, frame));
  EXPECT_FALSE(active.dhFrame(0xffffffffu, frame));
  EXPECT_EQ(capture.lines().size(), 5u);
  EXPECT_EQ(frame, shift(9, 9, 9));

  // A link may hang only from the base or an earlier link.
  RkIndividualManipulator looped = planarArm();
  RkIndividualManipulator::LinkVector links = looped.links();
  links[0].setParentIndex(1);
  looped.setLinks(links);
  RkManipulatorActivePositionState loopedState(looped);
  const RkPositionState zeros = stateAt({0, 0});
  ASSERT_TRUE(loopedState.setPositionState(zeros));
  capture.clear();
  EXPECT_FALSE(loopedState.primaryFrame(1, frame));
  links[0].setParentIndex(-2);
  looped.setLinks(links);
  EXPECT_FALSE(loopedState.dhFrame(0, frame));
  EXPECT_EQ(capture.lines().size(), 2u);

  // A joint type a document gives as a bare number reads back, but moves nothing.
  const std::string document =
      "<individualManipulator xmlns=\"http://rkmanipulation.org/namespace/ct#\"><name>odd</name>"
      "<links count=\"1\"><element><identifier>a</identifier><jointType>7</jointType></element></links>"
      "</individualManipulator>";
  RkIndividualManipulator odd;
  ASSERT_TRUE(RkXmlReader::readString(document, odd));
  RkManipulatorActivePositionState oddState(odd);
  const RkPositionState one = stateAt({0});
  EXPECT_TRUE(oddState.setPositionState(one));
  capture.clear();
  EXPECT_FALSE(odd.primaryFrame("a", oddState, frame));
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_NE(capture.lines()[0].text.find("unknown joint type 7"), std::string::npos);
}

TEST(RkSimpleStatedSystem, keeps_manipulators_and_states_side_by_side) {
  RkSimpleStatedSystem system;
  EXPECT_EQ(system.addManipulator(planarArm(), stateAt({0, 0})), 0u);
  EXPECT_EQ(system.addManipulator(planarArm(), stateAt({1, 1})), 1u);
  EXPECT_TRUE(system.setPositionState(1, stateAt({2, 2})));
  EXPECT_EQ(system.positionStates()[1], stateAt({2, 2}));
  EXPECT_EQ(system.positionStates()[0], stateAt({0, 0}));
  Rk::Print::Capture capture;
  EXPECT_FALSE(system.setPositionState(2, stateAt({3, 3})));
  EXPECT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(system.positionStates().size(), 2u);
}
