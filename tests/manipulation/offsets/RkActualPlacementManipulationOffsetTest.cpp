// The actual-placement offset against the fake arm: its goal follows the end effector cycle by cycle, and it
// fails with one line when nobody can say where the end effector is.
#include <gtest/gtest.h>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkActualPlacementManipulationOffset.h"

TEST(RkActualPlacementManipulationOffset, commands_where_the_end_effector_stands_at_every_update) {
  const RkActualPlacementManipulationOffset offset;
  RkFakeControlSystem system(2);
  const RkManipulationUpdateParams params = system.params();
  const RkManipulationSequence sequence;
  const RkManipulationSequenceState sequenceState;
  RkManipulationOffsetStateContainer container;
  system.controller.actual[1] = placementAt(0.1, 0.2, 0.3);
  ASSERT_TRUE(offset.init(0.0, params, sequence, sequenceState, 0, 1, container));
  RkManipulationOffsetState& state = *container.element();
  // Read first by update.
  EXPECT_EQ(offset.currentOffsetTransformation(state), RkEndEffectorPlacement());

  for (RkReal x : {0.1, 0.4, -0.2}) {
    system.controller.actual[1] = placementAt(x, 0.2, 0.3);
    EXPECT_EQ(offset.update(x, params, sequence, sequenceState, 0, 1, state), RkManipulationStatus::Complete);
    EXPECT_EQ(offset.currentOffsetTransformation(state).placement(), placementAt(x, 0.2, 0.3));
    EXPECT_EQ(offset.goalOffsetTransformation(state).placement(), placementAt(x, 0.2, 0.3));
  }
  system.controller.actual[1] = placementAt(1, 1, 1);
  const RkManipulationOffsetStateContainer end =
      offset.calculateEndState(params, sequence, sequenceState, 0, 1);
  EXPECT_EQ(end.element()->goalOffsetTransformation().placement(), placementAt(1, 1, 1));

  Rk::Print::Capture capture;
  EXPECT_EQ(offset.update(1.0, params, sequence, sequenceState, 0, 2, state), RkManipulationStatus::Failure);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text,
            "RkActualPlacementManipulationOffset::update no actual placement of end effector 2.\n");
  // The failed cycle leaves the last placement read.
  EXPECT_EQ(offset.currentOffsetTransformation(state).placement(), placementAt(-0.2, 0.2, 0.3));
}
