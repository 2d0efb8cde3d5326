// The subsequence frame: its sequence run through the sequence's own init and update, the event that can
// hold it past the subsequence's end, its answers taken from the subsequence's current frame, its status
// text and its failures.
#include <gtest/gtest.h>

#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "foundation/RkPrint.h"
#include "manipulation/support/RkNestedFrameTestTasks.h"

namespace {

// Down to the part and up again, each frame done on its first update.
RkManipulationSequence grasp() {
  RkManipulationSequence sequence;
  sequence.add(standardFrame("down", {placementAt(0.4, 0, 0.1)}, RkCountdownEvent(0)));
  sequence.add(standardFrame("up", {placementAt(0.4, 0, 0.3)}, RkCountdownEvent(0)));
  return sequence;
}

const RkSubsequenceManipulationFrameState& stateOf(const RkFrameRun& run) {
  return dynamic_cast<const RkSubsequenceManipulationFrameState&>(*run.container.element());
}

}  // namespace

TEST(RkSubsequenceManipulationFrame, passes_the_subsequence_on_and_completes_with_it_without_an_event) {
  Rk::Print::Capture capture;
  const RkSubsequenceManipulationFrame frame = subsequenceFrame("grasp", grasp());
  RkFrameRun run;
  ASSERT_TRUE(run.init(frame));
  // Nothing runs inside before the first update.
  EXPECT_EQ(frame.statusString(*run.container.element(), " / "), "");
  EXPECT_EQ(run.update(frame), RkManipulationStatus::Transition);
  EXPECT_EQ(frame.statusString(*run.container.element(), " / "), "grasp / down");
  EXPECT_EQ(run.goal(), placementAt(0.4, 0, 0.1));
  EXPECT_EQ(&frame.currentEndEffectorPlacement(*run.container.element()),
            &stateOf(run).runningFrameState()->currentEndEffectorPlacement());
  EXPECT_EQ(run.update(frame), RkManipulationStatus::Complete);
  EXPECT_EQ(run.goal(), placementAt(0.4, 0, 0.3));
  EXPECT_EQ(frame.statusString(*run.container.element(), ""),
            "grasp"
            "up");
  // The subsequence's frames give the answers: its offsets, set and data map.
  EXPECT_EQ(frame.offsetContainerVector(*run.container.element()).size(), 1u);
  EXPECT_EQ(capture.text(), "");

  // An empty subsequence cannot start; with nothing running inside, the answers are the null objects.
  const RkSubsequenceManipulationFrame empty = subsequenceFrame("empty", RkManipulationSequence());
  EXPECT_FALSE(run.init(empty));
  EXPECT_EQ(capture.text(),
            "RkManipulationSequence::init missing manipulation frames.\n"
            "RkSubsequenceManipulationFrame::init failed to initialize the subsequence.\n");
  EXPECT_EQ(stateOf(run).subsequenceState(), nullptr);
  EXPECT_EQ(empty.statusString(*run.container.element(), " / "), "");
  EXPECT_EQ(empty.offsetContainerVector(*run.container.element()).size(), 0u);
  EXPECT_EQ(&empty.goalEndEffectorPlacement(*run.container.element()),
            &RkManipulatorEndEffectorPlacement::nullObject());
}

TEST(RkSubsequenceManipulationFrame, its_event_holds_the_frame_in_progress_after_the_subsequence_completes) {
  Rk::Print::Capture capture;
  RkSubsequenceManipulationFrame frame = subsequenceFrame("grasp", grasp());
  setEvent(frame, lasting(0.01));
  RkFrameRun run;
  ASSERT_TRUE(run.init(frame, 0.0));
  EXPECT_EQ(run.update(frame, 0.0), RkManipulationStatus::Transition);
  // The subsequence completes here; the event has not fired.
  EXPECT_EQ(run.update(frame, 0.001), RkManipulationStatus::InProgress);
  const RkManipulationSequenceState completed =
      dynamic_cast<const RkManipulationSequenceState&>(*stateOf(run).subsequenceState());
  EXPECT_TRUE(completed.currentFrameIsComplete());
  for (RkReal time : {0.002, 0.005, 0.0099})
    EXPECT_EQ(run.update(frame, time), RkManipulationStatus::InProgress);
  // Held without updating the completed subsequence again: its state and its last goal stand.
  EXPECT_EQ(*stateOf(run).subsequenceState(), completed);
  EXPECT_EQ(run.goal(), placementAt(0.4, 0, 0.3));
  EXPECT_EQ(run.update(frame, 0.01), RkManipulationStatus::Complete);
  EXPECT_EQ(capture.text(), "");
}

TEST(RkSubsequenceManipulationFrame, a_failing_subsequence_fails_the_frame_without_a_line_of_its_own) {
  Rk::Print::Capture capture;
  RkManipulationSequence failing;
  failing.add(standardFrame("slip", {placementAt(0, 0, 0)}, RkCountdownEvent(0, true)));
  RkSubsequenceManipulationFrame frame = subsequenceFrame("grasp", failing);
  setEvent(frame, RkCountdownEvent(3));
  RkFrameRun run;
  ASSERT_TRUE(run.init(frame));
  EXPECT_EQ(run.update(frame), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkStandardManipulationFrame::update transition event failed to update.\n"
            "RkManipulationSequence::update unable to update frame 0.\n");
  // The event was updated in the failing call all the same.
  const auto& eventState =
      dynamic_cast<const RkCountdownEventState&>(*stateOf(run).transitionEventStateContainer().element());
  EXPECT_EQ(eventState.m_remaining.value(), 2u);

  // A failing event fails the frame with the frame's line.
  capture.clear();
  RkSubsequenceManipulationFrame failingEvent = subsequenceFrame("grasp", grasp());
  setEvent(failingEvent, RkCountdownEvent(0, true));
  ASSERT_TRUE(run.init(failingEvent));
  EXPECT_EQ(run.update(failingEvent), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(), "RkSubsequenceManipulationFrame::update transition event failed to update.\n");
}

TEST(RkSubsequenceManipulationFrame, end_state_is_the_subsequence_end_state_with_the_event_fired) {
  RkSubsequenceManipulationFrame frame = subsequenceFrame("grasp", grasp());
  setEvent(frame, lasting(2.0));
  RkFrameRun run;
  const RkManipulationFrameStateContainer end =
      frame.calculateEndState(run.params, run.sequence, run.sequenceState, 0);
  const auto& state = dynamic_cast<const RkSubsequenceManipulationFrameState&>(*end.element());
  EXPECT_EQ(*state.subsequenceState(), grasp().calculateEndState(run.params));
  EXPECT_EQ(state.goalEndEffectorPlacement().offsetTransformations()[0], placementAt(0.4, 0, 0.3));
  EXPECT_NE(dynamic_cast<const RkManipulationTimeDurationTransitionEventState*>(
                state.transitionEventStateContainer().element()),
            nullptr);
}
