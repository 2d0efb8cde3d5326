// A simulated arm's end effectors keep the maximum acceleration their set-up names, and take the documented
// default where it names none.
#include <gtest/gtest.h>

#include <string>

#include "RkSimulationTestSupport.h"
#include "control/RkManipulatorController.h"
#include "simulation/RkSimulatedSystem.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlTokens.h"

TEST(RkSimulatedEndEffectorSets, set_up_accelerations_are_kept_and_missing_ones_take_the_default) {
  const std::string setUp =
      "<simulatedEndEffectorSets xmlns=\"" + std::string(RkXml::RkNamespaceUri) +
      "\"><endEffectorSets count=\"1\"><element><endEffectors count=\"3\">"
      "<element><frameEndEffector><linkIdentifier>tool0</linkIdentifier>"
      "<maximumAcceleration>3.5</maximumAcceleration></frameEndEffector></element>"
      "<element><pointEndEffector><linkIdentifier>wrist_2_link</linkIdentifier></pointEndEffector></element>"
      "<element><pointEndEffector><linkIdentifier>forearm_link</linkIdentifier>"
      "<maximumAcceleration>-1</maximumAcceleration></pointEndEffector></element>"
      "</endEffectors></element></endEffectorSets></simulatedEndEffectorSets>";
  RkSimulatedEndEffectorSets sets;
  ASSERT_TRUE(RkXmlReader::readString(setUp, sets));
  const auto chain = loadUr5e();
  RkSimulatedSystem system;
  std::string error;
  ASSERT_EQ(system.addArm("arm", *chain, RkCoordinateSystemTransformation(), sets, error), 0) << error;
  const RkEndEffectorSet& driven = system.manipulatorController(0)->endEffectorSets()[0];
  ASSERT_EQ(driven.size(), 3u);
  EXPECT_EQ(driven.endEffector(0)->maximumAcceleration(), 3.5);
  EXPECT_EQ(driven.endEffector(1)->maximumAcceleration(),
            RkSimulatedEndEffectorSets::kDefaultMaximumAcceleration);
  EXPECT_EQ(driven.endEffector(2)->maximumAcceleration(),
            RkSimulatedEndEffectorSets::kDefaultMaximumAcceleration);
  EXPECT_EQ(driven.endEffector(1)->linkIdentifier(), "wrist_2_link");
  EXPECT_EQ(system.goalReachedCount(0, 2), 0u);
  system.manipulatorController(0)->notifyGoalReached(2);
  system.manipulatorController(0)->notifyGoalReached(2);
  EXPECT_EQ(system.goalReachedCount(0, 2), 2u);
  EXPECT_EQ(system.goalReachedCount(0, 3), 0u);
}
