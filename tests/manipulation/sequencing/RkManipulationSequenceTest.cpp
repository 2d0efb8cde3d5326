// The hand-over rule of sequences and the manager, their failure lines, end states and data-map merging.
#include <gtest/gtest.h>

#include <vector>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "sequencing/RkManipulationActionStateContainer.h"

using Status = RkManipulationStatus::Enum;

namespace {

std::vector<Status> runSequence(const RkManipulationSequence& sequence, int cycles) {
  RkManipulationActionStateContainer container;
  EXPECT_TRUE(sequence.init(container));
  std::vector<Status> statuses;
  RkManipulationUpdateParams params;
  for (int cycle = 0; cycle < cycles; ++cycle) {
    statuses.push_back(sequence.update(0.001 * cycle, params, *container.element()));
    if (statuses.back() == RkManipulationStatus::Complete || statuses.back() == RkManipulationStatus::Failure)
      break;
  }
  return statuses;
}

RkManipulationSequence countdownSequence(std::initializer_list<RkU32> updates) {
  RkManipulationSequence sequence;
  int index = 0;
  for (RkU32 count : updates) {
    sequence.add(standardFrame("f" + std::to_string(index), {placementAt(0.1 * (index + 1), 0, 0)},
                               RkCountdownEvent(count)));
    ++index;
  }
  return sequence;
}

}  // namespace

TEST(RkManipulationSequence, reports_transition_when_a_frame_starts_or_hands_over_and_complete_at_the_end) {
  using S = RkManipulationStatus::Enum;
  // One frame that completes at once: Complete, not Transition.
  EXPECT_EQ(runSequence(countdownSequence({0}), 5), (std::vector<Status>{S::Complete}));
  // Two frames, the first finishing at once: Transition, then the next frame starts in the next call.
  EXPECT_EQ(runSequence(countdownSequence({0, 0}), 5), (std::vector<Status>{S::Transition, S::Complete}));
  EXPECT_EQ(runSequence(countdownSequence({0, 2}), 5),
            (std::vector<Status>{S::Transition, S::Transition, S::InProgress, S::Complete}));
  // A frame still running: Transition once, then InProgress.
  EXPECT_EQ(runSequence(countdownSequence({3}), 10),
            (std::vector<Status>{S::Transition, S::InProgress, S::InProgress, S::Complete}));
}

TEST(RkManipulationSequence, keeps_one_state_per_started_frame_and_answers_for_the_running_frame) {
  const RkManipulationSequence sequence = countdownSequence({1, 1, 0});
  RkManipulationActionStateContainer container;
  ASSERT_TRUE(sequence.init(container));
  auto& state = dynamic_cast<RkManipulationSequenceState&>(*container.element());
  EXPECT_EQ(sequence.statusString(state, "  "), "");
  EXPECT_EQ(sequence.endEffectorPlacement(state), RkManipulatorEndEffectorPlacement::nullObject());
  RkManipulationUpdateParams params;
  sequence.update(0.0, params, state);
  sequence.update(0.0, params, state);
  sequence.update(0.0, params, state);
  EXPECT_EQ(state.currentFrameIndex(), 1u);
  EXPECT_EQ(state.manipulationFrameStateContainerVector().size(), 2u);
  EXPECT_EQ(sequence.statusString(state, "  "), "f1");
  EXPECT_EQ(sequence.endEffectorPlacement(state).offsetTransformations()[0], placementAt(0.2, 0, 0));
  EXPECT_TRUE(sequence.profiledPositionEndEffectorIndices(state).vectorContainer().empty());
}

TEST(RkManipulationSequence, failures_print_one_line_per_level_and_stop) {
  Rk::Print::Capture capture;
  RkManipulationActionStateContainer container;
  EXPECT_FALSE(RkManipulationSequence().init(container));
  EXPECT_EQ(capture.text(), "RkManipulationSequence::init missing manipulation frames.\n");

  capture.clear();
  RkManipulationSequence emptyFrame;
  emptyFrame.add(RkManipulationFrameContainer());
  EXPECT_EQ(runSequence(emptyFrame, 1), (std::vector<Status>{RkManipulationStatus::Failure}));
  EXPECT_EQ(capture.text(), "RkManipulationSequence::update frame 0 does not have a valid element.\n");

  // A frame whose init fails is not retried: the next update finds no state.
  capture.clear();
  RkManipulationSequence badDuration;
  badDuration.add(standardFrame("bad", {placementAt(0, 0, 0)}, lasting(0.0)));
  ASSERT_TRUE(badDuration.init(container));
  RkManipulationUpdateParams params;
  EXPECT_EQ(badDuration.update(0.0, params, *container.element()), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkManipulationTimeDurationTransitionEvent::init time duration must be positive.\n"
            "RkStandardManipulationFrame::init transition event failed to initialize.\n"
            "RkManipulationSequence::update unable to initialize frame 0.\n");
  capture.clear();
  EXPECT_EQ(badDuration.update(0.0, params, *container.element()), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(), "RkManipulationSequence::update frame 0 does not have a valid state.\n");

  capture.clear();
  RkManipulationSequence failing;
  failing.add(standardFrame("fails", {}, RkCountdownEvent(0, true)));
  EXPECT_EQ(runSequence(failing, 1), (std::vector<Status>{RkManipulationStatus::Failure}));
  EXPECT_EQ(capture.text(),
            "RkStandardManipulationFrame::update transition event failed to update.\n"
            "RkManipulationSequence::update unable to update frame 0.\n");

  // An update after Complete is refused, not run past the last frame.
  capture.clear();
  const RkManipulationSequence once = countdownSequence({0});
  ASSERT_TRUE(once.init(container));
  EXPECT_EQ(once.update(0.0, params, *container.element()), RkManipulationStatus::Complete);
  EXPECT_EQ(once.update(0.0, params, *container.element()), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkManipulationSequence::update frame 1 is past the last frame (1 frames); init first.\n");
  for (const auto& line : capture.lines()) EXPECT_EQ(line.level, 4);
}

TEST(RkManipulationSequence, end_state_holds_every_frame_completed) {
  const RkManipulationSequence sequence = timedSequence(3, 1.0);
  RkManipulationUpdateParams params;
  const RkManipulationSequenceState end = sequence.calculateEndState(params);
  EXPECT_EQ(end.currentFrameIndex(), 2u);
  EXPECT_FALSE(end.currentFrameNeedsInit());
  EXPECT_TRUE(end.currentFrameIsComplete());
  ASSERT_EQ(end.manipulationFrameStateContainerVector().size(), 3u);
  const auto* last = dynamic_cast<const RkStandardManipulationFrameState*>(
      end.manipulationFrameStateContainerVector()[2].element());
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(last->currentEndEffectorPlacement(), last->goalEndEffectorPlacement());
  EXPECT_EQ(last->goalEndEffectorPlacement().offsetTransformations()[0], placementAt(0.32, 0.1, 0.4));
  RkManipulationSequenceState emptyEnd;
  emptyEnd.setCurrentFrameIsComplete(true);
  EXPECT_EQ(RkManipulationSequence().calculateEndState(params), emptyEnd);
}

TEST(RkManipulationSequenceManager, runs_the_order_and_completes_exactly_once) {
  RkManipulationSequenceManager manager;
  manager.add("quick", countdownSequence({0}));
  manager.add("slow", countdownSequence({1}));
  manager.setSequenceOrder(orderOf({"quick", "slow", "quick"}));
  RkManipulationSequenceManagerState state;
  ASSERT_TRUE(manager.init(state));
  RkManipulationUpdateParams params;
  std::vector<Status> statuses;
  std::vector<const RkManipulationActionState*> states;
  for (int cycle = 0; cycle < 10 && (statuses.empty() || statuses.back() != RkManipulationStatus::Complete);
       ++cycle) {
    statuses.push_back(manager.update(cycle * 0.001, params, state));
    states.push_back(state.currentSequenceStateContainer().element());
  }
  using S = RkManipulationStatus::Enum;
  EXPECT_EQ(statuses, (std::vector<Status>{S::Transition, S::Transition, S::Transition, S::Complete}));
  // The repeated sequence ran again from a fresh state.
  const auto& lastState = dynamic_cast<const RkManipulationSequenceState&>(*states.back());
  EXPECT_EQ(lastState.manipulationFrameStateContainerVector().size(), 1u);
  EXPECT_EQ(state.currentSequenceIndex(), 2u);
}

TEST(RkManipulationSequenceManager, failures_and_guards_print_one_clear_line) {
  Rk::Print::Capture capture;
  RkManipulationSequenceManager manager;
  RkManipulationSequenceManagerState state;
  manager.add("a", countdownSequence({0}));
  EXPECT_FALSE(manager.init(state));
  EXPECT_EQ(capture.text(), "RkManipulationSequenceManager::init sequence order is empty.\n");
  EXPECT_FALSE(manager.empty());

  capture.clear();
  RkManipulationSequenceManager noMap;
  noMap.setSequenceOrder(orderOf({"a"}));
  EXPECT_TRUE(noMap.empty());
  EXPECT_FALSE(noMap.init(state));
  EXPECT_EQ(capture.text(), "RkManipulationSequenceManager::init sequence map is empty.\n");

  RkManipulationUpdateParams params;
  capture.clear();
  manager.setSequenceOrder(orderOf({"a", "missing"}));
  ASSERT_TRUE(manager.init(state));
  EXPECT_EQ(manager.update(0.0, params, state), RkManipulationStatus::Transition);
  EXPECT_EQ(manager.update(0.0, params, state), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkManipulationSequenceManager::update sequence 1 (\"missing\") is not in the sequence map.\n");
  EXPECT_EQ(manager.currentSequence(state), nullptr);
  EXPECT_EQ(manager.statusString(state, ""), "");
  EXPECT_EQ(manager.activeControlDescription(state), 0u);
  EXPECT_EQ(manager.endEffectorPlacement(state), RkManipulatorEndEffectorPlacement::nullObject());

  capture.clear();
  manager.setSequenceOrder(orderOf({"a"}));
  ASSERT_TRUE(manager.init(state));
  EXPECT_EQ(manager.update(0.0, params, state), RkManipulationStatus::Complete);
  EXPECT_EQ(manager.update(0.0, params, state), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkManipulationSequenceManager::update sequence 1 is past the end of the order (1 names); init "
            "first.\n");

  capture.clear();
  RkManipulationSequenceManager empties;
  empties.add("empty", RkManipulationSequence());
  empties.add("fails", [] {
    RkManipulationSequence sequence;
    sequence.add(standardFrame("x", {}, RkCountdownEvent(0, true)));
    return sequence;
  }());
  empties.setSequenceOrder(orderOf({"empty"}));
  ASSERT_TRUE(empties.init(state));
  EXPECT_EQ(empties.update(0.0, params, state), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkManipulationSequence::init missing manipulation frames.\n"
            "RkManipulationSequenceManager::update unable to initialize sequence 0.\n");
  capture.clear();
  empties.setSequenceOrder(orderOf({"fails"}));
  ASSERT_TRUE(empties.init(state));
  EXPECT_EQ(empties.update(0.0, params, state), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.lines().back().text,
            "RkManipulationSequenceManager::update unable to update sequence 0.\n");
}

TEST(RkManipulationSequenceManager, end_state_is_the_last_sequence_completed) {
  RkManipulationSequenceManager manager;
  manager.add("first", timedSequence(1, 1.0));
  manager.add("last", timedSequence(2, 1.0, 0.5));
  manager.setSequenceOrder(orderOf({"first", "last"}));
  RkManipulationUpdateParams params;
  const RkManipulationSequenceManagerState end = manager.calculateEndState(params);
  EXPECT_EQ(end.currentSequenceIndex(), 1u);
  EXPECT_TRUE(end.currentSequenceIsComplete());
  EXPECT_FALSE(end.currentSequenceNeedsInit());
  const auto* sequenceEnd =
      dynamic_cast<const RkManipulationSequenceState*>(end.currentSequenceStateContainer().element());
  ASSERT_NE(sequenceEnd, nullptr);
  EXPECT_EQ(*sequenceEnd, manager.sequenceMap().find(std::string("last"))->calculateEndState(params));
}

TEST(RkManipulationSequence, data_map_references_merge_with_the_earliest_frame_winning) {
  // Frames report the data-map names their offsets read; none of the offsets built so far reads any,
  // so merging happens over frames' own maps through a frame that reports its data map entries.
  class NamingFrame : public RkStandardManipulationFrame {
   public:
    NamingFrame(const char* name, RkReal value) : m_name(name), m_value(value) {}
    void findDataMapReferences(std::map<std::string, RkReal>& references) const override {
      references[m_name] = m_value;
      references["shared"] = m_value;
    }
    RkXmlObject* clone() const override { return new NamingFrame(*this); }

   private:
    std::string m_name;
    RkReal m_value;
  };
  RkManipulationSequence sequence;
  sequence.add(NamingFrame("a", 1.0));
  sequence.add(RkManipulationFrameContainer());
  sequence.add(NamingFrame("b", 2.0));
  std::map<std::string, RkReal> references{{"b", 9.0}};
  sequence.findDataMapReferences(references);
  EXPECT_EQ(references, (std::map<std::string, RkReal>{{"a", 1.0}, {"b", 9.0}, {"shared", 1.0}}));
}
