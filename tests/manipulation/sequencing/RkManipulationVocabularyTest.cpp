// Every class the library's documents can hold, found through the registered creators: each reads back
// equal and rewrites identically, and each offset, event and frame kind runs its steady cycles without
// allocating. A new class is covered as soon as its creator is registered.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "manipulation/support/RkNestedFrameTestTasks.h"
#include "offsets/RkActualPlacementManipulationOffset.h"
#include "offsets/RkFrameRelativeManipulationOffset.h"
#include "offsets/RkInterpolatedManipulationOffset.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "offsets/RkObjectRelativeManipulationOffset.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationVocabulary.h"
#include "waypoints/RkWaypointSequence.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace {

typedef std::map<RkToken, std::unique_ptr<RkXmlObject>> Samples;

// A corner of 2 cm zones that ActionArm's moving tool is already inside: its curve runs from the first cycle.
RkWaypointSequence cornerSample() {
  RkWaypointSequence corner;
  for (RkReal y : {0.1, 0.3}) {
    RkManipulationWaypoint waypoint;
    RkManipulatorEndEffectorPlacement goal;
    goal.setOffsetInRelative(0, placementAt(0.3, y, 0.4));
    waypoint.setGoal(goal);
    waypoint.setZoneRadius(0.02);
    corner.add(waypoint);
  }
  return corner;
}

// Filled objects for the classes whose default object does not run; a default object stands for the rest.
Samples runnableSamples() {
  Samples samples;
  samples[RkManipulation::RkWaypointSequenceToken].reset(cornerSample().clone());
  samples[RkManipulation::RkManipulationSequenceToken].reset(timedSequence(1, 0.5).clone());
  samples[RkManipulation::RkManipulationTimeDurationTransitionEventToken].reset(lasting(0.5).clone());
  // Relative offsets: to the lead frame's goal, to the arm's link "tool0", and to the arm itself.
  auto frameRelative = std::make_unique<RkFrameRelativeManipulationOffset>();
  frameRelative->setObjectFrameAsManipulationFrame();
  frameRelative->setRelativeOffset(placementAt(0, 0, -0.1));
  samples[frameRelative->token()] = std::move(frameRelative);
  auto linkRelative = std::make_unique<RkLinkRelativeManipulationOffset>();
  linkRelative->setObjectFrameAsManipulationFrame();
  linkRelative->setLinkIdentifier("tool0");
  samples[linkRelative->token()] = std::move(linkRelative);
  auto objectRelative = std::make_unique<RkObjectRelativeManipulationOffset>();
  objectRelative->setSystemFrameAsManipulationFrame();
  samples[objectRelative->token()] = std::move(objectRelative);
  // An approach to a constant goal that takes longer than the runs below.
  RkConstantManipulationOffset goal;
  goal.setOffset(RkEndEffectorPlacement(placementAt(0.3, 0.1, 0.4)));
  RkInterpolatedManipulationOffset approach;
  RkManipulationOffsetContainer target;
  target.setElement(goal);
  approach.setTargetOffset(target);
  approach.setInterpolationTime(10.0);
  samples[RkManipulation::RkInterpolatedManipulationOffsetToken].reset(approach.clone());
  // A frame of a constant, an interpolated and an actual-placement offset on the controller's active set,
  // waiting for placements the fake arm never reaches.
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(3);
  offsets[0].setElement(goal);
  offsets[1].setElement(approach);
  offsets[2].setElement(RkActualPlacementManipulationOffset());
  RkStandardManipulationFrame frame =
      standardFrame("sample", {}, RkManipulationPlacementAchievedTransitionEvent());
  frame.setOffsetContainerVector(offsets);
  frame.setActiveEndEffectorSet(RkStandardManipulationFrame::kControllerActiveSet);
  samples[RkManipulation::RkStandardManipulationFrameToken].reset(frame.clone());
  // A row of two values over a frame whose offset reads the value: it runs the parametric frame, its
  // publishing of the value and the offset that reads it.
  const RkParametricManipulationFrame row = parametricFrame(
      "row", frameWithOffset("slot", shiftedAlongY(placementAt(0.3, 0.1, 0.4), "y"), lasting(0.1)), "y",
      {0.0, 0.1});
  samples[RkManipulation::RkParametricManipulationFrameToken].reset(row.clone());
  samples[RkManipulation::RkParametricTranslationManipulationOffsetToken].reset(row.clone());
  samples[RkManipulation::RkSubsequenceManipulationFrameToken].reset(
      subsequenceFrame("twice", timedSequence(2, 0.08)).clone());
  RkReferencePoseManipulationOffset atSample;
  atSample.setPoseName("sample");
  samples[RkManipulation::RkReferencePoseManipulationOffsetToken].reset(atSample.clone());
  return samples;
}

// A controlled arm of one joint whose link "tool0" carries the one end effector of set 0, the frames'
// default, beside the controller's active set of three; no actual placements reach the placement-achieved
// event, so it waits.
struct RkOneLinkArm : RkFakeControlSystem {
  RkOneLinkArm() : RkFakeControlSystem(1) {
    RkManipulatorLink link;
    link.setIdentifier("tool0");
    manipulatorList[0].addLink(link);
    RkPositionState::RealVector positions;
    positions.pushBack(0.3);
    positionStateList[0].setJointPositions(positions);
    controller.sets.pushBack(RkFakeController(3).sets[0]);
    controller.activeSet = 1;
  }
};

// The poses the samples go to.
const RkPoseSet& samplePoses() {
  static const RkPoseSet poses = [] {
    RkPoseSet built;
    built.addPose(std::string("sample"), placementAt(0.3, 0.1, 0.4));
    return built;
  }();
  return poses;
}

::testing::AssertionResult roundTripsAny(const RkXmlObject& object) {
  std::string first, second;
  std::unique_ptr<RkXmlObject> read(object.newObject());
  if (!RkXmlWriter::writeString(object, first) || !RkXmlReader::readString(first, *read)) {
    return ::testing::AssertionFailure() << "could not write and read back:\n" << first;
  }
  if (!read->equality(&object)) return ::testing::AssertionFailure() << "read back differs:\n" << first;
  RkXmlWriter::writeString(*read, second);
  if (second != first) return ::testing::AssertionFailure() << "rewrite differs:\n" << first << second;
  return ::testing::AssertionSuccess();
}

// The frame that runs kind: a frame kind itself, or a standard frame around an offset or event kind.
std::unique_ptr<RkManipulationFrame> frameRunning(const RkXmlObject& kind) {
  if (auto* frame = dynamic_cast<const RkManipulationFrame*>(&kind)) {
    return std::unique_ptr<RkManipulationFrame>(static_cast<RkManipulationFrame*>(frame->clone()));
  }
  if (auto* event = dynamic_cast<const RkManipulationFrameTransitionEvent*>(&kind)) {
    return std::make_unique<RkStandardManipulationFrame>(
        standardFrame("event", {placementAt(0, 0, 0)}, *event));
  }
  if (auto* offset = dynamic_cast<const RkManipulationOffset*>(&kind)) {
    auto frame = std::make_unique<RkStandardManipulationFrame>(standardFrame("offset", {}, lasting(0.5)));
    RkXmlVectorType<RkManipulationOffsetContainer> offsets;
    offsets.pushBack(RkManipulationOffsetContainer());
    offsets[0].setElement(*offset);
    frame->setOffsetContainerVector(offsets);
    return frame;
  }
  return nullptr;
}

}  // namespace

TEST(RkManipulationVocabulary, every_class_the_documents_can_hold_reads_back_equal_and_rewrites_identically) {
  RkXmlSchema schema;
  RkManipulationVocabulary::addDocuments(schema);
  const Samples samples = runnableSamples();
  std::map<std::string, bool> met;
  for (const auto& prototype : schema.classes()) {
    const std::string name(prototype->token().localName());
    met[name] = true;
    EXPECT_TRUE(roundTripsAny(*prototype)) << name;
    const auto sample = samples.find(prototype->token());
    if (sample != samples.end()) {
      EXPECT_TRUE(roundTripsAny(*sample->second)) << name << " (sample)";
    }
  }
  // The walk reaches every family through its container's creators: a few landmarks of each.
  for (const char* name :
       {"manipulationSequence", "manipulationSequenceState", "standardManipulationFrame",
        "standardManipulationFrameState", "constantManipulationOffset", "constantManipulationOffsetState",
        "timeDurationTransitionEvent", "timeDurationTransitionEventState", "manipulationActionContainer",
        "parametricManipulationFrameState", "subsequenceManipulationFrameState",
        "parametricTranslationManipulationOffsetState", "referencePoseManipulationOffset", "poseSet",
        "manipulationActionDirectory", "waypointSequence", "manipulationWaypoint", "bezierInterpolator"}) {
    EXPECT_TRUE(met[name]) << name << " is not reached from the library's documents";
  }
  // Every creator of every container met made a class that was met too.
  for (const auto& prototype : schema.classes()) {
    auto* container = dynamic_cast<const RkXmlBaseVariableCompoundType*>(prototype.get());
    if (!container) continue;
    for (const auto& entry : container->creatorMap()) {
      EXPECT_TRUE(met[std::string(entry.first.localName())]) << entry.first.text();
    }
  }
}

TEST(RkManipulationVocabulary, every_frame_offset_and_event_kind_runs_steady_cycles_without_allocating) {
  RkXmlSchema schema;
  RkManipulationVocabulary::addDocuments(schema);
  const Samples samples = runnableSamples();
  RkOneLinkArm arm;
  int kinds = 0;
  for (const auto& prototype : schema.classes()) {
    const auto sample = samples.find(prototype->token());
    const RkXmlObject& kind = sample != samples.end() ? *sample->second : *prototype;
    const std::unique_ptr<RkManipulationFrame> frame = frameRunning(kind);
    if (!frame) continue;
    ++kinds;
    const std::string name(kind.token().localName());
    // A short lead frame, for kinds that refer to an earlier frame.
    RkManipulationSequence sequence;
    sequence.add(standardFrame("lead", {placementAt(0.2, 0, 0.3)}, lasting(0.01)));
    sequence.add(*frame);
    RkManipulationSequenceManager manager;
    manager.add("only", sequence);
    manager.setSequenceOrder(orderOf({"only"}));
    RkManipulationSequenceManagerState state;
    ASSERT_TRUE(manager.init(state)) << name;
    RkManipulationUpdateParams params = arm.params();
    params.poseSet = &samplePoses();
    const RkSteadyCycles steady = runCountingAllocations(manager, state, 200, params);
    ASSERT_NE(steady.last, RkManipulationStatus::Failure) << name << " fails by default: give it a sample";
    EXPECT_GT(steady.cycles, 100) << name;
    EXPECT_EQ(steady.allocations, 0) << name;
  }
  EXPECT_GE(kinds, 3);
}

namespace {

// An action run in the manager's place, so that its steady cycles are counted as a manager's are.
class RkActionRun : public RkManipulationSequenceManager {
 public:
  explicit RkActionRun(const RkManipulationAction& action) : m_action(action) {}
  RkBoolean init() const { return m_action.init(m_state); }
  const RkManipulationActionState& state() const { return *m_state.element(); }
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    RkManipulationSequenceManagerState&) const override {
    return m_action.update(time, params, *m_state.element());
  }

 private:
  const RkManipulationAction& m_action;
  mutable RkManipulationActionStateContainer m_state;
};

// One point end effector standing 2 cm before the sample corner, moving towards it at 1 cm/s.
struct ActionArm : RkFakeControlSystem {
  ActionArm() : RkFakeControlSystem(1) {
    controller.actual[0] = placementAt(0.28, 0.1, 0.4);
    controller.linearVelocity[0] = RkVector(0.01, 0, 0);
  }
};

}  // namespace

TEST(RkManipulationVocabulary, every_action_kind_runs_steady_cycles_without_allocating) {
  RkXmlSchema schema;
  RkManipulationVocabulary::addDocuments(schema);
  const Samples samples = runnableSamples();
  ActionArm arm;
  int kinds = 0;
  for (const auto& prototype : schema.classes()) {
    const auto sample = samples.find(prototype->token());
    const auto* action = dynamic_cast<const RkManipulationAction*>(
        sample != samples.end() ? sample->second.get() : prototype.get());
    if (!action) continue;
    ++kinds;
    const std::string name(action->token().localName());
    RkActionRun run(*action);
    ASSERT_TRUE(run.init()) << name;
    RkManipulationSequenceManagerState unused;
    const RkSteadyCycles steady = runCountingAllocations(run, unused, 200, arm.params());
    ASSERT_NE(steady.last, RkManipulationStatus::Failure) << name << " fails by default: give it a sample";
    EXPECT_GT(steady.cycles, 100) << name;
    EXPECT_EQ(steady.allocations, 0) << name;
    // A waypoint sequence profiles its end effector's position while its corner curve runs.
    if (dynamic_cast<const RkWaypointSequence*>(action)) {
      EXPECT_EQ(action->profiledPositionEndEffectorIndices(run.state()).size(), 1u) << "no corner curve ran";
    }
  }
  EXPECT_GE(kinds, 2);
}
