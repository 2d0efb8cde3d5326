#include "events/RkManipulationPlacementAchievedTransitionEvent.h"

#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorController.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "control/RkPositionControlSystem.h"
#include "foundation/RkPrint.h"
#include "frames/RkManipulationFrame.h"

namespace {
// What a goal counts as when its end effector has no actual placement.
constexpr RkReal kMissingPlacementDelta = 1000.0;
}  // namespace

void RkManipulationPlacementAchievedTransitionEvent::registerComponents() {
  registerComponent(RkManipulation::RkPlacementConvergenceWindowToken, &m_convergenceWindow,
                    "length of the convergence window, s; kept but not consulted");
  registerComponent(RkManipulation::RkPlacementTestIndicesToken, &m_testIndices,
                    "indices of the end effectors to test, from 0; empty means all");
  registerComponent(RkManipulation::RkPlacementToleranceToken, &m_tolerance,
                    "largest placement error at which the goal counts as reached, m (angles weigh by the end "
                    "effector's orientation weight length)");
  registerComponent(RkManipulation::RkSoftFailureToken, &m_softFailure,
                    "true: a goal the controller cannot reach completes the frame instead of failing it");
}

RkBoolean RkManipulationPlacementAchievedTransitionEvent::initState(RkReal, const Context&, State&) const {
  // Written so that a tolerance that is not a number is refused too.
  if (m_tolerance.value() > 0.0) return true;
  Rk::Print::write(4, "RkManipulationPlacementAchievedTransitionEvent::init tolerance must be positive.\n");
  return false;
}

// Real-time safe: reads the placements in place and allocates nothing.
RkManipulationStatus::Enum RkManipulationPlacementAchievedTransitionEvent::updateState(RkReal,
                                                                                       const Context& context,
                                                                                       State&) const {
  const RkManipulationFrameState& frameState = *context.frameState;
  const RkManipulatorEndEffectorPlacement::TransformationVector& goals =
      context.frame.goalEndEffectorPlacement(frameState).offsetTransformations();
  const RkEndEffectorSet& endEffectors = context.frame.endEffectorSet(context.params, frameState);
  const RkU32 goalCount = goals.size();
  if (goalCount != endEffectors.size()) {
    Rk::Print::write(
        4,
        "RkManipulationPlacementAchievedTransitionEvent::update size mismatch for placements and "
        "end effector set (%d != %d).\n",
        static_cast<int>(goalCount), static_cast<int>(endEffectors.size()));
    return RkManipulationStatus::Failure;
  }
  RkPositionControlSystem* system = context.params.positionControlSystem;
  const RkU32 controllerIndex = context.params.controllerIndex;
  RkManipulatorController* controller = system ? system->manipulatorController(controllerIndex) : nullptr;
  if (!controller) {
    Rk::Print::write(
        4, "RkManipulationPlacementAchievedTransitionEvent::update missing manipulator controller %u.\n",
        controllerIndex);
    return RkManipulationStatus::Failure;
  }
  const RkXmlVectorType<RkManipulatorEndEffectorPlacement>& current = system->currentEndEffectorPlacements();
  const RkManipulatorEndEffectorPlacement::TransformationVector& actuals =
      (controllerIndex < current.size() ? current[controllerIndex]
                                        : RkManipulatorEndEffectorPlacement::nullObject())
          .offsetTransformations();

  // An empty index list tests every end effector; indices past the goals count neither way.
  const RkU32 testCount = m_testIndices.size() > 0 ? m_testIndices.size() : goalCount;
  RkReal maxDelta = 0.0;
  RkManipulationStatus::Enum status = RkManipulationStatus::Complete;
  RkBoolean mayKeepConverging = true;
  for (RkU32 i = 0; i < testCount; ++i) {
    const RkU32 k = m_testIndices.size() > 0 ? m_testIndices[i].value() : i;
    if (k >= goalCount) continue;
    RkReal delta = kMissingPlacementDelta;
    if (k < actuals.size()) {
      const RkEndEffector* endEffector = endEffectors.endEffector(k);
      if (!endEffector) return RkManipulationStatus::Failure;
      delta = endEffector->placementError(actuals[k], goals[k]);
    }
    // A delta equal to the tolerance is reached; one that is not a number is not.
    if (!(delta <= m_tolerance.value())) {
      status = RkManipulationStatus::InProgress;
      mayKeepConverging = mayKeepConverging && controller->mayKeepConverging(k);
    }
    if (!(delta <= maxDelta)) maxDelta = delta;
  }
  if (status == RkManipulationStatus::Complete) {
    for (RkU32 i = 0; i < testCount; ++i) {
      const RkU32 k = m_testIndices.size() > 0 ? m_testIndices[i].value() : i;
      if (k < goalCount) controller->notifyPlacementAchieved(k);
    }
    return RkManipulationStatus::Complete;
  }
  if (mayKeepConverging) return RkManipulationStatus::InProgress;
  Rk::Print::write(
      4,
      "RkManipulationPlacementAchievedTransitionEvent::update convergence failed \n (max delta = "
      "%f; tolerance = %f). \n",
      maxDelta, m_tolerance.value());
  return m_softFailure ? RkManipulationStatus::Complete : RkManipulationStatus::Failure;
}
