// The parametric-translation offset: the translation read from the data map at init and applied in the
// target's frame, the goal read from its state applied in the system frame, and its failure lines.
#include <gtest/gtest.h>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkNestedFrameTestTasks.h"

namespace {

// A goal whose z axis points down: the tool of an arm reaching down onto a table.
RkCoordinateSystemTransformation pointingDown() {
  return RkCoordinateSystemTransformation(RkVector(0.4, 0.1, 0.3), RkOrientation(0, 1, 0, 0));
}

struct OffsetRun {
  RkFrameRun frame;
  RkManipulationOffsetStateContainer container;

  RkBoolean init(const RkManipulationOffset& offset) {
    return offset.init(0.0, frame.params, frame.sequence, frame.sequenceState, 0, 0, container);
  }
  RkParametricTranslationManipulationOffsetState& state() {
    return dynamic_cast<RkParametricTranslationManipulationOffsetState&>(*container.element());
  }
};

}  // namespace

TEST(RkParametricTranslationManipulationOffset, moves_the_target_along_its_own_axes_by_values_read_at_init) {
  RkParametricTranslationManipulationOffset offset = shiftedAlongY(pointingDown(), "");
  offset.setParametricZTag("depth");
  OffsetRun run;
  run.frame.params.dataMap.setValue("depth", 0.25);
  ASSERT_TRUE(run.init(offset));
  // Along the target's z axis, which points down.
  const RkCoordinateSystemTransformation moved(RkVector(0.4, 0.1, 0.05), RkOrientation(0, 1, 0, 0));
  EXPECT_TRUE(offset.goalOffsetTransformation(run.state()).placement().approxEq(moved, 1e-12));
  EXPECT_EQ(&offset.currentOffsetTransformation(run.state()), &run.state().currentOffset());

  // Values changed later do not move the goal until the frame starts again.
  run.frame.params.dataMap.setValue("depth", 0.1);
  EXPECT_EQ(
      offset.update(0.1, run.frame.params, run.frame.sequence, run.frame.sequenceState, 0, 0, run.state()),
      RkManipulationStatus::Complete);
  EXPECT_TRUE(run.state().currentOffset().placement().approxEq(moved, 1e-12));

  // The state's own goal puts the translation in the system frame, over its target state's goal (a
  // constant offset's state knows none), and overwrites the current offset as it does so.
  const RkEndEffectorPlacement& goal = run.state().goalOffsetTransformation();
  EXPECT_EQ(goal.placement(), placementAt(0, 0, 0.25));
  EXPECT_EQ(&goal, &run.state().currentOffset());

  // Computed afresh, the goal is the target's own; the end state applies the values then in force.
  EXPECT_EQ(offset
                .calculateOffsetTransformationInSystemFrame(run.frame.params, run.frame.sequence,
                                                            run.frame.sequenceState, 0, 0, run.state())
                .placement(),
            pointingDown());
  const RkManipulationOffsetStateContainer end =
      offset.calculateEndState(run.frame.params, run.frame.sequence, run.frame.sequenceState, 0, 0);
  const auto& endState = dynamic_cast<const RkParametricTranslationManipulationOffsetState&>(*end.element());
  EXPECT_TRUE(endState.currentOffset().placement().approxEq(
      RkCoordinateSystemTransformation(RkVector(0.4, 0.1, 0.2), RkOrientation(0, 1, 0, 0)), 1e-12));

  std::map<std::string, RkReal> references{{"depth", 3.0}};
  offset.setParametricXTag("x");
  offset.findDataMapReferences(references);
  EXPECT_EQ(references, (std::map<std::string, RkReal>{{"depth", 0.0}, {"x", 0.0}}));
}

TEST(RkParametricTranslationManipulationOffset, refuses_missing_parts_with_exact_lines) {
  Rk::Print::Capture capture;
  OffsetRun run;
  run.frame.params.dataMap.setValue("x", 0.1);
  RkParametricTranslationManipulationOffset offset = shiftedAlongY(pointingDown(), "y");
  offset.setParametricXTag("x");
  offset.setParametricZTag("z");
  // y is missing: z, also missing, is not looked up.
  EXPECT_FALSE(run.init(offset));
  // No tag at all, though the target starts.
  EXPECT_FALSE(run.init(shiftedAlongY(pointingDown(), "")));
  EXPECT_NE(run.state().targetOffsetState(), nullptr);
  RkParametricTranslationManipulationOffset noTarget;
  noTarget.setParametricXTag("x");
  EXPECT_FALSE(run.init(noTarget));
  EXPECT_EQ(
      noTarget.update(0.0, run.frame.params, run.frame.sequence, run.frame.sequenceState, 0, 0, run.state()),
      RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkParametricTranslationManipulationOffset::init the parametric Y tag (y) can not be found.\n"
            "RkParametricTranslationManipulationOffset::init at least one parametric tag must be specified.\n"
            "RkParametricTranslationManipulationOffset::init missing target offset container element.\n"
            "RkParametricTranslationManipulationOffset::update missing target offset container element.\n");

  // A target that cannot start: a reference pose without a pose set.
  capture.clear();
  RkParametricTranslationManipulationOffset overPose = noTarget;
  RkManipulationOffsetContainer target;
  target.setElement(RkReferencePoseManipulationOffset());
  overPose.setTargetOffset(target);
  EXPECT_FALSE(run.init(overPose));
  EXPECT_EQ(capture.text(),
            "RkParametricTranslationManipulationOffset::init target offset failed to initialize.\n");
}
