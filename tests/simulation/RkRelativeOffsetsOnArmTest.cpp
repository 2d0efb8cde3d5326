// The link-relative offset on the simulated UR5e and Panda: for random joint positions its goals agree with
// the link frames the arm's own kinematics give, for every link the model names.
#include <gtest/gtest.h>

#include <random>

#include "RkSimulationTestSupport.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "sequencing/RkManipulationSequence.h"
#include "simulation/RkSimulatedSystem.h"

namespace {

RkCoordinateSystemTransformation fromIsometry(const Eigen::Isometry3d& isometry) {
  return RkCoordinateSystemTransformation(RkVector(isometry.translation()),
                                          RkOrientation(Eigen::Quaterniond(isometry.rotation())));
}

void checkArm(const RkKinematicChain& chain, const char* tip) {
  RkSimulatedSystem system;
  std::string error;
  const RkCoordinateSystemTransformation base(RkVector(0.3, -0.2, 0.1),
                                              RkOrientation::fromAngleAxis(0.6, RkVector(0, 0, 1)));
  ASSERT_EQ(system.addArm("arm", chain, base, RkSimulatedEndEffectorSets::tipFrame(tip), error), 0) << error;
  RkManipulationUpdateParams params;
  params.statedSystem = &system;
  params.positionControlSystem = &system;
  const RkManipulationSequence sequence;
  const RkManipulationSequenceState sequenceState;
  const RkCoordinateSystemTransformation relative(RkVector(0, 0, 0.12),
                                                  RkOrientation::fromAngleAxis(M_PI, RkVector(1, 0, 0)));

  std::mt19937 random(7);
  const RkIndividualManipulator& model = system.manipulators()[0];
  ASSERT_GT(model.links().size(), 5u);
  for (int trial = 0; trial < 20; ++trial) {
    ASSERT_TRUE(system.armController(0).setJointPositions(randomJoints(chain, random, 0.05), error)) << error;
    ASSERT_TRUE(system.step(0.001, error)) << error;
    // The positions the arm reports are those the offsets read.
    const RkPositionState::RealVector& reported = system.positionStates()[0].jointPositions();
    Eigen::VectorXd q(chain.jointCount());
    for (int i = 0; i < q.size(); ++i) q[i] = reported[i];
    for (RkU32 i = 0; i < model.links().size(); ++i) {
      const std::string& link = model.links()[i].identifier();
      SCOPED_TRACE(testing::Message() << "trial " << trial << " link " << link);
      Eigen::Isometry3d inBase;
      ASSERT_TRUE(chain.linkPlacement(q, link, inBase));
      RkLinkRelativeManipulationOffset offset;
      offset.setObjectFrameAsManipulationFrame();
      offset.setRelativeOffset(relative);
      offset.setLinkIdentifier(link);
      RkManipulationOffsetStateContainer container;
      ASSERT_TRUE(offset.init(0.0, params, sequence, sequenceState, 0, 0, container));
      EXPECT_TRUE(container.element()->goalOffsetTransformation().placement().approxEq(
          base * fromIsometry(inBase) * relative, 1e-9));
    }
  }
}

}  // namespace

TEST(RkRelativeOffsetsOnArm, link_goals_agree_with_the_arms_own_kinematics_for_every_link) {
  checkArm(*loadUr5e(), "tool0");
  checkArm(*loadPanda(), "panda_hand_tcp");
}
