// The simulated system behind the platform interfaces: tasks reach their goals in the system frame, several
// arms stand side by side, the stated system's model agrees with the simulated arm, and set-up files load.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "control/RkFrameEndEffector.h"
#include "control/RkManipulatorController.h"
#include "foundation/RkPrint.h"
#include "manipulator/RkManipulatorActivePositionState.h"
#include "simulation/RkSimulatedSystem.h"

namespace {

std::unique_ptr<RkKinematicChain> ur5e() {
  std::string error;
  auto chain = RkKinematicChain::fromUrdfFile(RK_ROBOTS_DIR "/ur5e.urdf", "", "", error);
  EXPECT_TRUE(chain) << error;
  return chain;
}

RkSimulatedEndEffectorSets ur5eSetUp() {
  RkSimulatedEndEffectorSets sets;
  EXPECT_TRUE(RkSimulatedEndEffectorSets::forRobot(RK_ROBOTS_DIR "/ur5e.urdf", "tool0", sets));
  return sets;
}

const RkCoordinateSystemTransformation kDown(RkVector(0.45, 0.15, 0.3), RkOrientation(0, 1, 0, 0));

// Commands goal to arm for up to seconds of 1 ms cycles.
void drive(RkSimulatedSystem& system, RkU32 arm, const RkCoordinateSystemTransformation& goal,
           double seconds) {
  RkManipulatorEndEffectorPlacement placement;
  placement.setOffsetInRelative(0, goal);
  std::string error;
  for (int cycle = 0; cycle < seconds * 1000; ++cycle) {
    ASSERT_TRUE(system.command(arm, placement, error)) << error;
    ASSERT_TRUE(system.step(0.001, error)) << error;
  }
}

}  // namespace

TEST(RkSimulatedSystem, arms_reach_goals_given_in_the_system_frame_wherever_their_bases_stand) {
  auto chain = ur5e();
  RkSimulatedSystem system;
  std::string error;
  const RkCoordinateSystemTransformation shifted(RkVector(1.0, -0.5, 0.2),
                                                 RkOrientation::fromAngleAxis(M_PI / 2, RkVector::zVector()));
  ASSERT_EQ(system.addArm("left", *chain, RkCoordinateSystemTransformation(), ur5eSetUp(), error), 0)
      << error;
  ASSERT_EQ(system.addArm("right", *chain, shifted, ur5eSetUp(), error), 1) << error;
  const RkCoordinateSystemTransformation rightGoal = shifted * kDown;
  RkManipulatorEndEffectorPlacement left, right;
  left.setOffsetInRelative(0, kDown);
  right.setOffsetInRelative(0, rightGoal);
  for (int cycle = 0; cycle < 3000; ++cycle) {
    ASSERT_TRUE(system.command(0, left, error) && system.command(1, right, error) &&
                system.step(0.001, error))
        << error;
  }
  RkCoordinateSystemTransformation actual;
  ASSERT_TRUE(system.actualPlacement(0, 0, actual));
  EXPECT_TRUE(actual.approxEq(kDown, 1e-3)) << actual.translation().x();
  ASSERT_TRUE(system.actualPlacement(1, 0, actual));
  EXPECT_TRUE(actual.approxEq(rightGoal, 1e-3));
  EXPECT_FALSE(system.actualPlacement(2, 0, actual));
  EXPECT_FALSE(system.actualPlacement(0, 1, actual));

  // The controller interface answers for the active set, in the system frame.
  RkManipulatorController* controller = system.manipulatorController(1);
  ASSERT_NE(controller, nullptr);
  EXPECT_EQ(system.manipulatorController(2), nullptr);
  RkXmlVectorType<RkXmlBasicType<RkU32>> indices;
  indices.pushBack(0u);
  RkXmlVectorType<RkCoordinateSystemTransformation> placements;
  EXPECT_TRUE(controller->actualPlacements(indices, placements));
  EXPECT_TRUE(placements[0].approxEq(rightGoal, 1e-3));
  RkVector linear, angular;
  EXPECT_TRUE(controller->endEffectorVelocity(0, linear, angular));
  EXPECT_LT(linear.norm(), 1e-2);
  EXPECT_FALSE(controller->endEffectorVelocity(3, linear, angular));
  EXPECT_GT(system.lookAheadTime(), 0.0);
}

TEST(RkSimulatedSystem, stated_system_model_agrees_with_the_simulated_arm) {
  auto chain = ur5e();
  RkSimulatedSystem system;
  std::string error;
  const RkCoordinateSystemTransformation base(RkVector(0.3, 0.2, 0.1),
                                              RkOrientation::fromAngleAxis(0.4, RkVector(1, 1, 0)));
  ASSERT_EQ(system.addArm("arm", *chain, base, ur5eSetUp(), error), 0) << error;
  for (const RkCoordinateSystemTransformation& goal :
       {base * kDown,
        base * RkCoordinateSystemTransformation(RkVector(0.3, -0.3, 0.5), RkOrientation(0, 0, 1, 0))}) {
    drive(system, 0, goal, 0.7);
    ASSERT_EQ(system.manipulators().size(), 1u);
    const RkIndividualManipulator& model = system.manipulators()[0];
    RkManipulatorActivePositionState active(model);
    ASSERT_TRUE(active.setPositionState(system.positionStates()[0]));
    RkCoordinateSystemTransformation tool;
    ASSERT_TRUE(model.primaryFrame("tool0", active, tool));
    RkCoordinateSystemTransformation actual;
    ASSERT_TRUE(system.actualPlacement(0, 0, actual));
    EXPECT_TRUE(tool.approxEq(actual, 1e-9)) << tool.translation().x() << " " << actual.translation().x();
    // Six joints, and the immobile tool0 at the end of the model.
    EXPECT_EQ(system.positionStates()[0].jointPositions().size(), 7u);
  }
}

TEST(RkSimulatedSystem, set_up_files_load_or_fail_with_one_line) {
  RkSimulatedEndEffectorSets sets;
  EXPECT_EQ(RkSimulatedEndEffectorSets::fileFor("/robots/arm.urdf"), "/robots/arm.endeffectors.xml");
  EXPECT_TRUE(RkSimulatedEndEffectorSets::forRobot("/nonexistent/arm.urdf", "tip", sets));
  EXPECT_EQ(sets, RkSimulatedEndEffectorSets::tipFrame("tip"));
  EXPECT_EQ(ur5eSetUp().homeJointPositions().size(), 6u);

  const std::string robot = testing::TempDir() + "/broken.urdf";
  std::ofstream(RkSimulatedEndEffectorSets::fileFor(robot)) << "<simulatedEndEffectorSets xmlns=\"x\">";
  Rk::Print::Capture capture;
  EXPECT_FALSE(RkSimulatedEndEffectorSets::forRobot(robot, "tip", sets));
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_NE(capture.lines()[0].text.find("broken.endeffectors.xml"), std::string::npos);
  std::remove(RkSimulatedEndEffectorSets::fileFor(robot).c_str());

  auto chain = ur5e();
  RkSimulatedSystem system;
  std::string error;
  RkSimulatedEndEffectorSets wrongHome = ur5eSetUp();
  wrongHome.setHomeJointPositions(RkSimulatedEndEffectorSets::RealVector(3));
  EXPECT_EQ(system.addArm("arm", *chain, RkCoordinateSystemTransformation(), wrongHome, error), -1);
  EXPECT_EQ(error, "arm: 3 home joint positions for 6 joints");
  RkSimulatedEndEffectorSets unknownLink = RkSimulatedEndEffectorSets::tipFrame("no_such_link");
  EXPECT_EQ(system.addArm("arm", *chain, RkCoordinateSystemTransformation(), unknownLink, error), -1);
  EXPECT_FALSE(error.empty());
  EXPECT_EQ(system.armCount(), 0u);

  // The UR5e's set-up names no maximum acceleration: its tool is driven with 1.2 m/s²; one named stays.
  RkFrameEndEffector tool;
  tool.setLinkIdentifier("tool0");
  tool.setMaximumAcceleration(3.5);
  RkXmlVectorType<RkEndEffectorSet> toolSets(1);
  toolSets[0].add(tool);
  RkSimulatedEndEffectorSets named = ur5eSetUp();
  named.setEndEffectorSets(toolSets);
  ASSERT_EQ(system.addArm("default", *chain, RkCoordinateSystemTransformation(), ur5eSetUp(), error), 0);
  ASSERT_EQ(system.addArm("named", *chain, RkCoordinateSystemTransformation(), named, error), 1);
  EXPECT_EQ(system.manipulatorController(0)->endEffectorSets()[0].endEffector(0)->maximumAcceleration(), 1.2);
  EXPECT_EQ(system.manipulatorController(1)->endEffectorSets()[0].endEffector(0)->maximumAcceleration(), 3.5);
}
