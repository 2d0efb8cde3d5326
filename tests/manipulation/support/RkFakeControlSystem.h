#pragma once
// A programmable controlled system for the library's tests: one manipulator and one controller whose end
// effectors stand where the test puts them, a switch for may-keep-converging, and counts of the
// notifications the library sends. Nothing here allocates once built, so steady-state cycles stay
// allocation-free under it.
#include <array>
#include <string>

#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorController.h"
#include "control/RkPointEndEffector.h"
#include "control/RkPositionControlSystem.h"
#include "manipulator/RkStatedSystem.h"
#include "sequencing/RkManipulationUpdateParams.h"

class RkFakeController : public RkManipulatorController {
 public:
  static constexpr RkU32 Capacity = 8;

  // One active set of `count` point end effectors on links "tool0", "tool1", ... standing at the origin.
  explicit RkFakeController(RkU32 count = 2) {
    RkEndEffectorSet set;
    for (RkU32 i = 0; i < count && i < Capacity; ++i) {
      RkPointEndEffector point;
      point.setLinkIdentifier("tool" + std::to_string(i));
      set.add(point);
    }
    sets.pushBack(set);
  }

  const RkXmlVectorType<RkEndEffectorSet>& endEffectorSets() const override { return sets; }
  RkU32 activeEndEffectorSetIndex() const override { return activeSet; }
  RkBoolean actualPlacements(const RkXmlVectorType<RkXmlBasicType<RkU32>>& indices,
                             RkXmlVectorType<RkCoordinateSystemTransformation>& out) const override {
    out.clear();
    for (RkU32 i = 0; i < indices.size(); ++i) {
      if (!known(indices[i].value())) return false;
      out.pushBack(actual[indices[i].value()]);
    }
    return true;
  }
  RkBoolean endEffectorVelocity(RkU32 index, RkVector& linear, RkVector& angular) const override {
    if (!known(index)) return false;
    linear = linearVelocity[index];
    angular = angularVelocity[index];
    return true;
  }
  RkBoolean mayKeepConverging(RkU32 index) const override { return known(index) && converging[index]; }
  void notifyPlacementAchieved(RkU32 index) override {
    if (index < Capacity) ++placementAchievedCount[index];
  }
  void notifyGoalReached(RkU32 index) override {
    if (index < Capacity) ++goalReachedCount[index];
  }

  // An index of the active set.
  bool known(RkU32 index) const {
    return activeSet < sets.size() && index < sets[activeSet].size() && index < Capacity;
  }

  RkXmlVectorType<RkEndEffectorSet> sets;
  RkU32 activeSet = 0;
  std::array<RkCoordinateSystemTransformation, Capacity> actual{};
  std::array<RkVector, Capacity> linearVelocity{};
  std::array<RkVector, Capacity> angularVelocity{};
  std::array<bool, Capacity> converging{true, true, true, true, true, true, true, true};
  std::array<RkU32, Capacity> placementAchievedCount{};
  std::array<RkU32, Capacity> goalReachedCount{};
};

// The system around one RkFakeController: controller 0 and, for offsets that read the arm, manipulator 0
// with its position state (both empty until the test fills them).
class RkFakeControlSystem : public RkPositionControlSystem, public RkStatedSystem {
 public:
  explicit RkFakeControlSystem(RkU32 endEffectorCount = 2) : controller(endEffectorCount) {
    manipulatorList.pushBack(RkIndividualManipulator());
    positionStateList.pushBack(RkPositionState());
  }

  RkU32 manipulatorControllerCount() const override { return 1; }
  RkManipulatorController* manipulatorController(RkU32 index) override {
    return index == 0 ? &controller : nullptr;
  }
  const RkXmlVectorType<RkManipulatorEndEffectorPlacement>& currentEndEffectorPlacements() const override {
    return placements;
  }
  RkBoolean actualPlacement(RkU32 manipulatorIndex, RkU32 endEffectorIndex,
                            RkCoordinateSystemTransformation& placement) const override {
    if (manipulatorIndex != 0 || !controller.known(endEffectorIndex)) return false;
    placement = controller.actual[endEffectorIndex];
    return true;
  }
  RkReal lookAheadTime() const override { return lookAhead; }

  const RkXmlVectorType<RkIndividualManipulator>& manipulators() const override { return manipulatorList; }
  const RkXmlVectorType<RkPositionState>& positionStates() const override { return positionStateList; }

  // Update parameters that point at this system, manipulator 0 and controller 0.
  RkManipulationUpdateParams params() {
    RkManipulationUpdateParams result;
    result.statedSystem = this;
    result.positionControlSystem = this;
    return result;
  }

  RkFakeController controller;
  RkXmlVectorType<RkManipulatorEndEffectorPlacement> placements;
  RkXmlVectorType<RkIndividualManipulator> manipulatorList;
  RkXmlVectorType<RkPositionState> positionStateList;
  RkReal lookAhead = 0.0;
};
