// The run loop on the simulated arm: frame ends reported once each, at their times, with the arm there;
// the maximum time and a failing task stop it; a lone sequence runs as an action; the tip comes from the
// robot's set-up.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "foundation/RkPrint.h"
#include "frames/RkStandardManipulationFrame.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "simulation/RkSimulatedTaskRunner.h"

namespace {

RkStandardManipulationFrame frame(const std::string& tag, double x, double y, double z, double seconds) {
  RkConstantManipulationOffset offset;
  offset.setOffset(
      RkEndEffectorPlacement(RkCoordinateSystemTransformation(RkVector(x, y, z), RkOrientation(0, 1, 0, 0))));
  RkManipulationOffsetContainer container;
  container.setElement(offset);
  RkXmlVectorType<RkManipulationOffsetContainer> offsets;
  offsets.pushBack(container);
  RkManipulationTimeDurationTransitionEvent event;
  event.setTimeDuration(seconds);
  RkManipulationFrameTransitionEventContainer eventContainer;
  eventContainer.setElement(event);
  RkStandardManipulationFrame result;
  result.setTag(tag);
  result.setOffsetContainerVector(offsets);
  result.setTransitionEventContainer(eventContainer);
  return result;
}

RkManipulationSequenceManager task(const std::vector<std::string>& order) {
  RkManipulationSequence approach, retreat;
  approach.add(frame("above", 0.45, 0.15, 0.35, 1.0));
  approach.add(frame("at", 0.45, 0.15, 0.25, 1.0));
  retreat.add(frame("clear", 0.3, 0.3, 0.45, 1.0));
  RkManipulationSequenceManager manager;
  manager.add("approach", approach);
  manager.add("retreat", retreat);
  RkManipulationSequenceManager::SequenceOrder names;
  for (const std::string& name : order) names.pushBack(name);
  manager.setSequenceOrder(names);
  return manager;
}

struct FrameEnd {
  double time;
  std::string sequence, tag;
  RkU32 index;
  double position, angle;
};

void loadUr5e(RkSimulatedTaskRunner& runner) {
  std::string error;
  ASSERT_TRUE(runner.loadRobot(RK_ROBOTS_DIR "/ur5e.urdf", "", error)) << error;
}

TEST(RkSimulatedTaskRunner,
     runs_a_manager_cycle_by_cycle_and_reports_each_frame_end_once_with_the_arm_there) {
  RkSimulatedTaskRunner runner;
  loadUr5e(runner);
  std::vector<FrameEnd> ends;
  int transitions = 0;
  long cycleCalls = 0;
  runner.setTransitionCallback([&](const RkSimulatedTaskRunner& r) {
    ++transitions;
    if (!r.frameEnded()) return;
    FrameEnd end{r.time(), r.sequenceName(), r.frameText(), r.frameIndex(), 0, 0};
    r.placementError(end.position, end.angle);
    ends.push_back(end);
  });
  runner.setCycleCallback([&](const RkSimulatedTaskRunner& r) { EXPECT_EQ(r.cycles(), ++cycleCalls); });
  const RkManipulationSequenceManager manager = task({"approach", "retreat"});
  ASSERT_EQ(runner.run(manager), RkManipulationStatus::Complete) << runner.failure();
  // Each frame starts in the cycle after the one in which the previous frame ended, and ends in the first
  // cycle whose time has reached its trigger time (one more when the sum rounds up).
  ASSERT_EQ(ends.size(), 3u);
  const double times[] = {1.0, 2.001, 3.002};
  const char* tags[] = {"above", "at", "clear"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_GE(ends[i].time, times[i] - 1e-9);
    EXPECT_LE(ends[i].time, times[i] + 0.001 + 1e-9);
    EXPECT_EQ(ends[i].sequence, i < 2 ? "approach" : "retreat");
    EXPECT_EQ(ends[i].tag, tags[i]);
    EXPECT_EQ(ends[i].index, i < 2 ? static_cast<RkU32>(i) : 0u);
    EXPECT_LT(ends[i].position, 1e-4);
    EXPECT_LT(ends[i].angle, 1e-4);
  }
  EXPECT_EQ(transitions, 6);  // three starts, three ends
  EXPECT_EQ(cycleCalls, runner.cycles());
  EXPECT_EQ(runner.time(), ends.back().time);
  EXPECT_NEAR(runner.commanded().offsetTransformations()[0].translation().z(), 0.45, 1e-12);
}

TEST(RkSimulatedTaskRunner, stops_at_the_maximum_time_and_when_the_task_fails) {
  RkSimulatedTaskRunner runner;
  loadUr5e(runner);
  EXPECT_FALSE(runner.setRate(NAN));
  EXPECT_FALSE(runner.setRate(0.0));
  EXPECT_FALSE(runner.setMaxTime(-1.0));
  EXPECT_FALSE(runner.setMaxTime(INFINITY));
  ASSERT_TRUE(runner.setRate(100.0));
  ASSERT_TRUE(runner.setMaxTime(0.5));
  const RkManipulationSequenceManager manager = task({"approach"});
  EXPECT_EQ(runner.run(manager), RkManipulationStatus::InProgress);
  EXPECT_NEAR(runner.time(), 0.5, 1e-9);
  EXPECT_EQ(runner.cycles(), 51);
  double position = 0, angle = 0;
  runner.placementError(position, angle);
  EXPECT_EQ(runner.frameText(), "above");
  EXPECT_GE(position, 0.0);

  ASSERT_TRUE(runner.setMaxTime(600.0));
  Rk::Print::Capture quiet;
  const RkManipulationSequenceManager missing = task({"approach", "place"});
  EXPECT_EQ(runner.run(missing), RkManipulationStatus::Failure);
  EXPECT_NEAR(runner.time(), 2.02, 1e-9);  // "approach" ran to its end first
  EXPECT_EQ(runner.commanded().offsetTransformations().size(), 0u);
  EXPECT_EQ(runner.run(RkManipulationSequenceManager()), RkManipulationStatus::Failure);
  EXPECT_EQ(runner.failure(), "the task cannot start");
}

TEST(RkSimulatedTaskRunner, runs_a_lone_sequence_as_an_action) {
  RkSimulatedTaskRunner runner;
  loadUr5e(runner);
  const RkManipulationSequenceManager manager = task({"approach"});
  int ends = 0;
  runner.setTransitionCallback([&](const RkSimulatedTaskRunner& r) {
    ends += r.frameEnded();
    EXPECT_EQ(r.sequenceName(), "");
  });
  EXPECT_EQ(runner.run(*manager.sequenceMap().find("approach")), RkManipulationStatus::Complete);
  EXPECT_EQ(ends, 2);
}

TEST(RkSimulatedTaskRunner, takes_the_tip_from_the_set_up_and_tells_which_goals_are_in_reach) {
  RkSimulatedTaskRunner runner;
  std::string error;
  ASSERT_TRUE(runner.loadRobot(RK_ROBOTS_DIR "/panda.urdf", "", error)) << error;
  EXPECT_EQ(runner.chain().tipLink(), "panda_hand_tcp");
  EXPECT_FALSE(runner.loadRobot(RK_ROBOTS_DIR "/panda.urdf", "panda_leftfinger", error));
  EXPECT_NE(error.find("panda.endeffectors.xml: "), std::string::npos) << error;
  EXPECT_NE(error.find("panda_hand_tcp"), std::string::npos) << error;

  loadUr5e(runner);
  const RkOrientation down(0, 1, 0, 0);
  EXPECT_TRUE(
      runner.system().canReach(0, 0, 0, RkCoordinateSystemTransformation(RkVector(0.45, 0.15, 0.3), down)));
  EXPECT_FALSE(
      runner.system().canReach(0, 0, 0, RkCoordinateSystemTransformation(RkVector(3.5, 0, 0.3), down)));
  EXPECT_FALSE(
      runner.system().canReach(0, 1, 0, RkCoordinateSystemTransformation(RkVector(0.45, 0.15, 0.3), down)));
  // The search leaves the arm where it was.
  EXPECT_EQ(runner.system().armController(0).jointPositions()[1], -1.5707963267948966);
}

}  // namespace
