#pragma once
// The reference simulated system: simulated arms, each with its own position controller, behind the
// platform's position-control and stated-system interfaces, so that tasks run without hardware. Placements
// it takes and gives are in the system frame; each arm's base stands at its base placement in it.
#include <memory>
#include <string>
#include <vector>

#include "control/RkPositionControlSystem.h"
#include "manipulator/RkStatedSystem.h"
#include "simulation/RkArmController.h"
#include "simulation/RkSimulatedEndEffectorSets.h"

class RkSimulatedSystem : public RkPositionControlSystem, public RkStatedSystem {
 public:
  RkSimulatedSystem();
  ~RkSimulatedSystem() override;
  RkSimulatedSystem(const RkSimulatedSystem&) = delete;
  RkSimulatedSystem& operator=(const RkSimulatedSystem&) = delete;

  // Adds an arm whose chain base stands at basePlacement; every end effector of every set is simulated, those
  // of the active set are driven. Returns the arm's index, or -1 with error set (unknown link, bad set
  // index).
  int addArm(const std::string& name, const RkKinematicChain& chain,
             const RkCoordinateSystemTransformation& basePlacement, const RkSimulatedEndEffectorSets& sets,
             std::string& error);
  RkArmController& armController(RkU32 arm);
  RkU32 armCount() const;
  // How many times the arm's controller was told that end effector endEffector of its active set had
  // achieved its placement; 0 for an arm or end effector that is not there.
  RkU32 placementAchievedCount(RkU32 arm, RkU32 endEffector) const;

  // Commands the placements of the active set's end effectors of an arm, in end-effector order.
  bool command(RkU32 arm, const RkManipulatorEndEffectorPlacement& placement, std::string& error);
  // Moves every arm by one cycle and refreshes the placements and states it reports. Real-time safe.
  bool step(double dt, std::string& error);
  // Whether end effector `endEffector` of end-effector set `set` of an arm can be put at `goal` (in the
  // system frame) within the arm's joint limits; false for an arm, set or end effector that is not there.
  bool canReach(RkU32 arm, RkU32 set, RkU32 endEffector, const RkCoordinateSystemTransformation& goal) const;
  // How many times the arm's controller was told that end effector endEffector of its active set reached the
  // final goal of the running action; 0 for an arm or end effector that is not there.
  RkU32 goalReachedCount(RkU32 arm, RkU32 endEffector) const;
  // The origins, in the system frame, of the arm's base, of the link each joint moves and of its tip, from
  // the base out: the points a drawing of the arm joins with straight links. False for an arm not there.
  bool linkOrigins(RkU32 arm, std::vector<Eigen::Vector3d>& origins) const;

  // Position-control system.
  RkU32 manipulatorControllerCount() const override;
  RkManipulatorController* manipulatorController(RkU32 index) override;
  const RkXmlVectorType<RkManipulatorEndEffectorPlacement>& currentEndEffectorPlacements() const override;
  RkBoolean actualPlacement(RkU32 manipulatorIndex, RkU32 endEffectorIndex,
                            RkCoordinateSystemTransformation& placement) const override;
  RkReal lookAheadTime() const override;

  // Stated system.
  const RkXmlVectorType<RkIndividualManipulator>& manipulators() const override { return m_manipulators; }
  const RkXmlVectorType<RkPositionState>& positionStates() const override { return m_positionStates; }

 private:
  class Arm;
  void refresh(RkU32 arm);

  std::vector<std::unique_ptr<Arm>> m_arms;
  RkXmlVectorType<RkManipulatorEndEffectorPlacement> m_currentPlacements;
  RkXmlVectorType<RkIndividualManipulator> m_manipulators;
  RkXmlVectorType<RkPositionState> m_positionStates;
};
