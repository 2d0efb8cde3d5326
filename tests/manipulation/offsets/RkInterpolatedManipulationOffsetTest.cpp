// The interpolated offset against the fake arm: the approach from the actual placement, arrival, a target
// that is still moving, a zero interpolation time, and its failures with their exact lines.
#include <gtest/gtest.h>

#include <cmath>

#include "foundation/RkPrint.h"
#include "frames/RkStandardManipulationFrame.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkActualPlacementManipulationOffset.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkInterpolatedManipulationOffset.h"

namespace {

const RkCoordinateSystemTransformation kTarget(RkVector(2, 0, 0),
                                               RkOrientation::fromAngleAxis(M_PI / 2, RkVector::zVector()));

RkConstantManipulationOffset constantAt(const RkCoordinateSystemTransformation& goal) {
  RkConstantManipulationOffset offset;
  offset.setOffset(RkEndEffectorPlacement(goal));
  return offset;
}

RkInterpolatedManipulationOffset approaching(const RkManipulationOffset& target, RkReal interpolationTime) {
  RkInterpolatedManipulationOffset offset;
  RkManipulationOffsetContainer container;
  container.setElement(target);
  offset.setTargetOffset(container);
  offset.setInterpolationTime(interpolationTime);
  return offset;
}

// One end effector of a fake arm, standing at the origin, and the offset's state.
struct OffsetRun {
  RkFakeControlSystem system{1};
  RkManipulationUpdateParams params = system.params();
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;
  RkManipulationOffsetStateContainer container;

  bool init(const RkManipulationOffset& offset, RkReal time) {
    return offset.init(time, params, sequence, sequenceState, 0, 0, container);
  }
  RkManipulationStatus::Enum update(const RkManipulationOffset& offset, RkReal time) {
    return offset.update(time, params, sequence, sequenceState, 0, 0, *container.element());
  }
  const RkCoordinateSystemTransformation& current(const RkManipulationOffset& offset) const {
    return offset.currentOffsetTransformation(*container.element()).placement();
  }
};

}  // namespace

TEST(RkInterpolatedManipulationOffset,
     approaches_from_the_actual_placement_and_arrives_with_the_targets_status) {
  const RkInterpolatedManipulationOffset offset = approaching(constantAt(kTarget), 2.0);
  OffsetRun run;
  const RkCoordinateSystemTransformation start(RkVector(0, 0, 1), RkOrientation());
  run.system.controller.actual[0] = start;
  ASSERT_TRUE(run.init(offset, 10.0));
  EXPECT_EQ(run.current(offset), start);
  // The arm moving after the start does not move the start.
  run.system.controller.actual[0] = placementAt(5, 5, 5);

  EXPECT_EQ(run.update(offset, 11.0), RkManipulationStatus::InProgress);
  const RkCoordinateSystemTransformation halfway(RkVector(1, 0, 0.5),
                                                 RkOrientation::fromAngleAxis(M_PI / 4, RkVector::zVector()));
  EXPECT_TRUE(run.current(offset).approxEq(halfway, 1e-12));
  EXPECT_EQ(offset.goalOffsetTransformation(*run.container.element()).placement(), kTarget);

  EXPECT_EQ(run.update(offset, 12.0), RkManipulationStatus::Complete);
  EXPECT_EQ(run.current(offset), kTarget);
  EXPECT_EQ(run.update(offset, 13.0), RkManipulationStatus::Complete);
  EXPECT_EQ(run.current(offset), kTarget);
}

TEST(RkInterpolatedManipulationOffset, follows_a_target_still_in_progress_and_keeps_its_status) {
  // The target is itself an approach to x = 4 over 4 s, so it moves and reports InProgress until 14.
  const RkInterpolatedManipulationOffset offset =
      approaching(approaching(constantAt(placementAt(4, 0, 0)), 4.0), 2.0);
  OffsetRun run;
  ASSERT_TRUE(run.init(offset, 10.0));
  EXPECT_EQ(run.update(offset, 11.0), RkManipulationStatus::InProgress);
  EXPECT_EQ(run.current(offset), placementAt(0.5, 0, 0));  // halfway to where the target is now
  EXPECT_EQ(run.update(offset, 12.0), RkManipulationStatus::InProgress);
  EXPECT_EQ(run.current(offset), placementAt(2, 0, 0));
  EXPECT_EQ(run.update(offset, 14.0), RkManipulationStatus::Complete);
  EXPECT_EQ(run.current(offset), placementAt(4, 0, 0));
}

TEST(RkInterpolatedManipulationOffset, a_zero_interpolation_time_takes_the_target_at_once) {
  const RkInterpolatedManipulationOffset offset = approaching(constantAt(kTarget), 0.0);
  OffsetRun run;
  Rk::Print::Capture capture;
  ASSERT_TRUE(run.init(offset, 10.0));
  EXPECT_EQ(run.update(offset, 10.0), RkManipulationStatus::Complete);
  EXPECT_EQ(run.current(offset), kTarget);
  EXPECT_EQ(run.update(offset, 10.5), RkManipulationStatus::Complete);
  EXPECT_EQ(run.current(offset), kTarget);
  EXPECT_TRUE(capture.lines().empty());
}

TEST(RkInterpolatedManipulationOffset, fails_without_a_target_or_an_actual_placement_with_exact_lines) {
  Rk::Print::Capture capture;
  const RkInterpolatedManipulationOffset missing;
  OffsetRun run;
  EXPECT_FALSE(run.init(missing, 0.0));
  RkInterpolatedManipulationOffsetState state;
  EXPECT_EQ(missing.update(1.0, run.params, run.sequence, run.sequenceState, 0, 0, state),
            RkManipulationStatus::Failure);

  // A target that cannot start.
  EXPECT_FALSE(run.init(approaching(missing, 1.0), 0.0));

  // A target that fails on the way: the actual placement it follows is gone.
  const RkInterpolatedManipulationOffset following = approaching(RkActualPlacementManipulationOffset(), 1.0);
  ASSERT_TRUE(run.init(following, 0.0));
  run.system.controller.activeSet = 5;
  EXPECT_EQ(run.update(following, 0.5), RkManipulationStatus::Failure);

  // Nothing tells where the arm stands.
  run.params.positionControlSystem = nullptr;
  EXPECT_FALSE(run.init(approaching(constantAt(kTarget), 1.0), 0.0));

  const std::vector<std::string> expected = {
      "RkInterpolatedManipulationOffset::init missing target offset container element.\n",
      "RkInterpolatedManipulationOffset::update missing target offset container element.\n",
      "RkInterpolatedManipulationOffset::init missing target offset container element.\n",
      "RkInterpolatedManipulationOffset::init target offset failed to initialize.\n",
      "RkActualPlacementManipulationOffset::update no actual placement of end effector 0.\n",
      "RkInterpolatedManipulationOffset::update target offset failed to update.\n",
      "RkInterpolatedManipulationOffset::init no actual placement of end effector 0.\n"};
  ASSERT_EQ(capture.lines().size(), expected.size()) << capture.text();
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(capture.lines()[i].level, 4);
    EXPECT_EQ(capture.lines()[i].text, expected[i]);
  }
}

TEST(RkInterpolatedManipulationOffset, end_state_and_replacement_go_through_the_target) {
  RkInterpolatedManipulationOffset offset = approaching(constantAt(kTarget), 2.0);
  OffsetRun run;
  run.system.controller.actual[0] = placementAt(0, 1, 0);
  const RkManipulationOffsetStateContainer end =
      offset.calculateEndState(run.params, run.sequence, run.sequenceState, 0, 0);
  const auto& endState = dynamic_cast<const RkInterpolatedManipulationOffsetState&>(*end.element());
  EXPECT_EQ(endState.initialOffset().placement(), placementAt(0, 1, 0));
  EXPECT_EQ(endState.initializationTime(), 0.0);
  EXPECT_EQ(offset.goalOffsetTransformation(endState).placement(), kTarget);

  ASSERT_TRUE(run.init(offset, 0.0));
  offset.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(placementAt(3, 0, 0)), run.params,
                                                  run.sequence, run.sequenceState, 0, 0,
                                                  *run.container.element());
  EXPECT_EQ(offset.goalOffsetTransformation(*run.container.element()).placement(), placementAt(3, 0, 0));
  EXPECT_EQ(run.update(offset, 2.0), RkManipulationStatus::Complete);
  EXPECT_EQ(run.current(offset), placementAt(3, 0, 0));

  // Replaced in a running frame, it hands its own state to its constant target, which answers with its
  // offset whatever the state: the new offset starts from the target's goal.
  RkStandardManipulationFrame frame = standardFrame("f", {}, RkCountdownEvent(5));
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(1);
  offsets[0].setElement(approaching(constantAt(kTarget), 2.0));
  frame.setOffsetContainerVector(offsets);
  RkManipulationFrameStateContainer frameContainer;
  ASSERT_TRUE(frame.init(0.0, run.params, run.sequence, run.sequenceState, 0, frameContainer));
  auto& frameState = dynamic_cast<RkStandardManipulationFrameState&>(*frameContainer.element());
  const RkManipulationOffsetState& interpolatedState = *frameState.offsetState(0);
  EXPECT_EQ(constantAt(kTarget).currentOffsetTransformation(interpolatedState).placement(), kTarget);
  EXPECT_EQ(constantAt(kTarget).goalOffsetTransformation(interpolatedState).placement(), kTarget);
  RkConstantManipulationOffsetState constantState;
  ASSERT_TRUE(frame.replaceManipulationOffset(run.params, run.sequence, run.sequenceState, 0, 0,
                                              RkConstantManipulationOffset(), interpolatedState,
                                              constantState));
  const auto& replaced = frame.offsetContainerVector(frameState)[0];
  EXPECT_EQ(dynamic_cast<const RkConstantManipulationOffset&>(*replaced.element()).offset().placement(),
            kTarget);
  // And back: an interpolated offset over a constant one takes the place through its target.
  RkManipulationOffsetStateContainer started;
  const RkInterpolatedManipulationOffset again = approaching(constantAt(placementAt(0, 0, 0)), 1.0);
  ASSERT_TRUE(again.init(0.0, run.params, run.sequence, run.sequenceState, 0, 0, started));
  ASSERT_TRUE(frame.replaceManipulationOffset(run.params, run.sequence, run.sequenceState, 0, 0, again,
                                              constantState, *started.element()));
  EXPECT_EQ(frame.offsetContainerVector(frameState)[0]
                .element()
                ->goalOffsetTransformation(*started.element())
                .placement(),
            kTarget);
}
