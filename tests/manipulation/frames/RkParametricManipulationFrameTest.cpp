// The parametric frame: its target run once per value with the value published, the steps reported as
// transitions, its event running across the values, its status text and its failure lines.
#include <gtest/gtest.h>

#include <vector>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkNestedFrameTestTasks.h"

namespace {

// Places at y = slot: the target completes on its second update.
RkStandardManipulationFrame placeAtSlot() {
  return frameWithOffset("place", shiftedAlongY(placementAt(0.4, 0, 0.2), "slot"), RkCountdownEvent(1));
}

struct Step {
  RkManipulationStatus::Enum status;
  RkReal published;
  RkReal goalY;
  bool operator==(const Step& other) const {
    return status == other.status && published == other.published && goalY == other.goalY;
  }
};

// Updates frame until it completes or fails, at most 20 times.
std::vector<Step> runToEnd(const RkManipulationFrame& frame, RkFrameRun& run) {
  std::vector<Step> steps;
  for (int i = 0; i < 20; ++i) {
    const RkManipulationStatus::Enum status = run.update(frame, 0.001 * i);
    RkReal published = -1.0;
    run.params.dataMap.lookup("slot", published);
    steps.push_back({status, published, run.goal().translation().y()});
    if (status == RkManipulationStatus::Complete || status == RkManipulationStatus::Failure) break;
  }
  return steps;
}

}  // namespace

TEST(RkParametricManipulationFrame, runs_its_target_once_per_value_and_reports_each_step_as_a_transition) {
  const RkParametricManipulationFrame row = parametricFrame("row", placeAtSlot(), "slot", {-0.1, 0.0, 0.1});
  RkFrameRun run;
  ASSERT_TRUE(run.init(row));
  EXPECT_EQ(run.goal().translation().y(), -0.1);
  const std::vector<Step> expected = {
      {RkManipulationStatus::InProgress, -0.1, -0.1}, {RkManipulationStatus::Transition, 0.0, 0.0},
      {RkManipulationStatus::InProgress, 0.0, 0.0},   {RkManipulationStatus::Transition, 0.1, 0.1},
      {RkManipulationStatus::InProgress, 0.1, 0.1},   {RkManipulationStatus::Complete, 0.1, 0.1}};
  EXPECT_EQ(runToEnd(row, run), expected);
  EXPECT_EQ(
      dynamic_cast<const RkParametricManipulationFrameState&>(*run.container.element()).parametricIndex(),
      2u);

  // One value: the target's own run, with the value published and no transition of its own.
  const RkParametricManipulationFrame once = parametricFrame("once", placeAtSlot(), "slot", {0.05});
  RkFrameRun single;
  ASSERT_TRUE(single.init(once));
  const std::vector<Step> alone = {{RkManipulationStatus::InProgress, 0.05, 0.05},
                                   {RkManipulationStatus::Complete, 0.05, 0.05}};
  EXPECT_EQ(runToEnd(once, single), alone);

  // A value set in the data map is published again on every cycle, whatever else wrote there.
  ASSERT_TRUE(single.init(once));
  single.params.dataMap.setValue("slot", 7.0);
  single.update(once);
  RkReal published = 0.0;
  ASSERT_TRUE(single.params.dataMap.lookup("slot", published));
  EXPECT_EQ(published, 0.05);
}

TEST(RkParametricManipulationFrame, its_event_runs_across_all_values_and_can_hold_the_end) {
  RkParametricManipulationFrame row = parametricFrame("row", placeAtSlot(), "slot", {-0.1, 0.0, 0.1});
  // Fires on its eighth update: two after the target's last completion.
  setEvent(row, RkCountdownEvent(7));
  RkFrameRun run;
  ASSERT_TRUE(run.init(row));
  std::vector<RkManipulationStatus::Enum> statuses;
  for (const Step& step : runToEnd(row, run)) statuses.push_back(step.status);
  const std::vector<RkManipulationStatus::Enum> expected = {
      RkManipulationStatus::InProgress, RkManipulationStatus::Transition, RkManipulationStatus::InProgress,
      RkManipulationStatus::Transition, RkManipulationStatus::InProgress, RkManipulationStatus::InProgress,
      RkManipulationStatus::InProgress, RkManipulationStatus::Complete};
  EXPECT_EQ(statuses, expected);

  // An event that fires first does not cut the values short: the steps still report Transition.
  setEvent(row, RkCountdownEvent(0));
  ASSERT_TRUE(run.init(row));
  statuses.clear();
  for (const Step& step : runToEnd(row, run)) statuses.push_back(step.status);
  EXPECT_EQ(statuses.size(), 6u);
  EXPECT_EQ(statuses[1], RkManipulationStatus::Transition);
  EXPECT_EQ(statuses.back(), RkManipulationStatus::Complete);
}

TEST(RkParametricManipulationFrame, status_text_joins_tags_value_and_target_text_with_the_prefix_alone) {
  const RkStandardManipulationFrame place =
      frameWithOffset("place", shiftedAlongY(placementAt(0.4, 0, 0.2), "slot y="), RkCountdownEvent(1));
  const RkParametricManipulationFrame row = parametricFrame("row", place, "slot y=", {-0.05, 0.25});
  RkFrameRun run;
  ASSERT_TRUE(run.init(row));
  EXPECT_EQ(row.statusString(*run.container.element(), " / "), "row / slot y=-0.05 / place");
  run.update(row);
  run.update(row);
  EXPECT_EQ(row.statusString(*run.container.element(), "|"), "row|slot y=0.25|place");
  RkParametricManipulationFrame untagged = row;
  untagged.setTag(std::string());
  EXPECT_EQ(untagged.statusString(*run.container.element(), " / "), "slot y=0.25 / place");
  RkParametricManipulationFrame unnamed = row;
  unnamed.setParametricTag(std::string());
  EXPECT_EQ(unnamed.statusString(*run.container.element(), " / "), "place");
}

TEST(RkParametricManipulationFrame, refuses_what_cannot_run_with_exact_lines) {
  Rk::Print::Capture capture;
  RkFrameRun run;
  EXPECT_FALSE(run.init(parametricFrame("row", placeAtSlot(), "", {0.1})));
  EXPECT_FALSE(run.init(parametricFrame("row", placeAtSlot(), "slot", {})));
  // The target reads a tag nobody publishes.
  const RkStandardManipulationFrame lost =
      frameWithOffset("lost", shiftedAlongY(placementAt(0, 0, 0), "other"), RkCountdownEvent(0));
  EXPECT_FALSE(run.init(parametricFrame("row", lost, "slot", {0.1})));
  RkParametricManipulationFrame failingEvent = parametricFrame("row", placeAtSlot(), "slot", {0.1});
  setEvent(failingEvent, lasting(0.0));
  EXPECT_FALSE(run.init(failingEvent));
  EXPECT_EQ(capture.text(),
            "RkParametricManipulationFrame::init the parametric tag must be specified.\n"
            "RkParametricManipulationFrame::init at least one parametric value must be specified.\n"
            "RkParametricTranslationManipulationOffset::init the parametric Y tag (other) can not be found.\n"
            "RkStandardManipulationFrame::init manipulation offset failed to initialize.\n"
            "RkParametricManipulationFrame::init failed to initialize the target frame.\n"
            "RkManipulationTimeDurationTransitionEvent::init time duration must be positive.\n"
            "RkParametricManipulationFrame::init transition event failed to initialize.\n");

  // The target fails on its update; then a restart on the next value fails and leaves the old value.
  capture.clear();
  const RkParametricManipulationFrame failing =
      parametricFrame("row", standardFrame("f", {}, RkCountdownEvent(0, true)), "slot", {0.1});
  ASSERT_TRUE(run.init(failing));
  EXPECT_EQ(run.update(failing), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkStandardManipulationFrame::update transition event failed to update.\n"
            "RkParametricManipulationFrame::update target frame failed to update.\n");
  capture.clear();
  RkPoseSet poses;
  poses.addPose(std::string("pick"), placementAt(0.4, 0, 0.2));
  RkReferencePoseManipulationOffset atPick;
  atPick.setPoseName("pick");
  const RkParametricManipulationFrame restart =
      parametricFrame("row", frameWithOffset("at pick", atPick, RkCountdownEvent(0)), "slot", {0.1, 0.2});
  run.params.poseSet = &poses;
  ASSERT_TRUE(run.init(restart));
  run.params.poseSet = nullptr;
  EXPECT_EQ(run.update(restart), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkStandardManipulationFrame::init manipulation offset failed to initialize.\n"
            "RkParametricManipulationFrame::update failed to initialize the target frame.\n");
  const auto& state = dynamic_cast<const RkParametricManipulationFrameState&>(*run.container.element());
  EXPECT_EQ(state.parametricIndex(), 0u);
  EXPECT_EQ(restart.statusString(state, " "), "row slot0.1 at pick");
}
