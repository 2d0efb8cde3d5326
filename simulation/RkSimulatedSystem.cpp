#include "simulation/RkSimulatedSystem.h"

#include <algorithm>

#include "control/RkManipulatorController.h"
#include "control/RkPointEndEffector.h"

namespace {

Eigen::Isometry3d toIsometry(const RkCoordinateSystemTransformation& placement) {
  Eigen::Isometry3d isometry = Eigen::Isometry3d::Identity();
  isometry.linear() = placement.orientation().matrix();
  isometry.translation() = placement.translation().eigen();
  return isometry;
}

RkCoordinateSystemTransformation toTransformation(const Eigen::Isometry3d& isometry) {
  return RkCoordinateSystemTransformation(RkVector(isometry.translation()),
                                          RkOrientation(Eigen::Quaterniond(isometry.rotation())));
}

// The chain as the manipulator model describes it: one link per joint (the joint's child link, with its
// placement in the previous one at zero joint positions and its axis in its own frame), then the tip as an
// immobile link. Links held rigidly between joints are folded into the next link's fixed transformation.
RkIndividualManipulator modelOf(const std::string& name, const RkKinematicChain& chain) {
  RkIndividualManipulator manipulator;
  manipulator.setName(name);
  const int joints = chain.jointCount();
  const Eigen::VectorXd zero = Eigen::VectorXd::Zero(joints);
  Eigen::MatrixXd jacobian(6, joints);
  Eigen::Isometry3d parent = Eigen::Isometry3d::Identity();
  int previousLink = 0;
  auto addLink = [&](int link, const Eigen::Vector3d& axisInBase, RkManipulatorLink::JointType type) {
    Eigen::Isometry3d placement;
    chain.linkPlacement(zero, link, placement);
    RkManipulatorLink model;
    model.setIdentifier(chain.linkNames()[link]);
    model.setParentIndex(static_cast<int>(manipulator.links().size()) - 1);
    model.setFixedTransformation(toTransformation(parent.inverse() * placement));
    model.setJointType(type);
    model.setJointAxis(RkVector(placement.rotation().transpose() * axisInBase));
    manipulator.addLink(model);
    parent = placement;
    previousLink = link;
  };
  for (int joint = 0; joint < joints; ++joint) {
    const int link = chain.jointLinkIndex(joint);
    chain.linkJacobian(zero, link, jacobian);
    const bool prismatic = chain.jointTypes()[joint] == RkKinematicChain::JointType::Prismatic;
    const Eigen::Vector3d axis = prismatic ? Eigen::Vector3d(jacobian.block<3, 1>(0, joint))
                                           : Eigen::Vector3d(jacobian.block<3, 1>(3, joint));
    addLink(link, axis,
            prismatic ? RkManipulatorLink::JointType::Prismatic : RkManipulatorLink::JointType::Revolute);
  }
  const int tip = static_cast<int>(chain.linkNames().size()) - 1;
  if (tip != previousLink) addLink(tip, Eigen::Vector3d::Zero(), RkManipulatorLink::JointType::Revolute);
  return manipulator;
}

}  // namespace

// One simulated arm behind the controller interface; indices of end effectors are within its active set.
class RkSimulatedSystem::Arm : public RkManipulatorController {
 public:
  Arm(const RkKinematicChain& chain, const RkCoordinateSystemTransformation& base,
      const RkSimulatedEndEffectorSets& sets)
      : controller(chain), basePlacement(base), baseIsometry(toIsometry(base)), endEffectorSetList(sets) {}

  const RkXmlVectorType<RkEndEffectorSet>& endEffectorSets() const override {
    return endEffectorSetList.endEffectorSets();
  }
  RkU32 activeEndEffectorSetIndex() const override { return endEffectorSetList.activeEndEffectorSet(); }

  RkBoolean actualPlacements(const RkXmlVectorType<RkXmlBasicType<RkU32>>& indices,
                             RkXmlVectorType<RkCoordinateSystemTransformation>& out) const override {
    if (out.size() != indices.size()) out.resize(indices.size());
    RkBoolean all = true;
    for (RkU32 i = 0; i < indices.size(); ++i) {
      const RkArmController::EndEffectorStatus* status = statusOf(indices[i].value());
      if (status) {
        out[i] = toTransformation(baseIsometry * status->placement);
      } else {
        all = false;
      }
    }
    return all;
  }
  RkBoolean endEffectorVelocity(RkU32 index, RkVector& linear, RkVector& angular) const override {
    const RkArmController::EndEffectorStatus* status = statusOf(index);
    if (!status) return false;
    linear = RkVector(baseIsometry.rotation() * status->linearVelocity);
    angular = RkVector(baseIsometry.rotation() * status->angularVelocity);
    return true;
  }
  // A "no" is given once: the client then moves on, and whatever it waits for next is watched afresh from
  // the next step, even before its first command arrives.
  RkBoolean mayKeepConverging(RkU32 index) const override {
    const RkArmController::EndEffectorStatus* status = statusOf(index);
    if (!status) return false;
    if (!status->mayKeepConverging && index < gaveUp.size()) gaveUp[index] = 1;
    return status->mayKeepConverging;
  }
  void notifyPlacementAchieved(RkU32 index) override {
    if (index < placementAchieved.size()) ++placementAchieved[index];
  }
  void notifyGoalReached(RkU32 index) override {
    if (index < goalReached.size()) ++goalReached[index];
  }

  // The controller's status of end effector index of the active set, or null.
  const RkArmController::EndEffectorStatus* statusOf(RkU32 index) const {
    const RkU32 active = activeEndEffectorSetIndex();
    if (active >= effectorIndex.size() || index >= effectorIndex[active].size()) return nullptr;
    return controller.status(effectorIndex[active][index]);
  }

  RkArmController controller;
  RkCoordinateSystemTransformation basePlacement;
  Eigen::Isometry3d baseIsometry;
  RkSimulatedEndEffectorSets endEffectorSetList;
  std::vector<std::vector<int>> effectorIndex;  // [set][end effector] -> controller index
  std::vector<RkU32> placementAchieved;         // notifications per end effector of the active set
  mutable std::vector<char> gaveUp;             // told it may not keep converging since the last step
  std::vector<RkU32> goalReached;               // notifications per end effector of the active set
  RkPositionState::RealVector jointPositions, jointVelocities;
};

RkSimulatedSystem::RkSimulatedSystem() = default;
RkSimulatedSystem::~RkSimulatedSystem() = default;

int RkSimulatedSystem::addArm(const std::string& name, const RkKinematicChain& chain,
                              const RkCoordinateSystemTransformation& basePlacement,
                              const RkSimulatedEndEffectorSets& sets, std::string& error) {
  const RkXmlVectorType<RkEndEffectorSet>& setList = sets.endEffectorSets();
  if (sets.activeEndEffectorSet() >= setList.size()) {
    error = name + ": the active end-effector set " + std::to_string(sets.activeEndEffectorSet()) +
            " is not one of its " + std::to_string(setList.size()) + " sets";
    return -1;
  }
  std::unique_ptr<Arm> arm(new Arm(chain, basePlacement, sets));
  arm->effectorIndex.resize(setList.size());
  for (RkU32 s = 0; s < setList.size(); ++s) {
    for (RkU32 e = 0; e < setList[s].size(); ++e) {
      const RkEndEffector* endEffector = setList[s].endEffector(e);
      if (!endEffector) {
        error = name + ": end-effector set " + std::to_string(s) + " has an empty entry " + std::to_string(e);
        return -1;
      }
      const bool point = dynamic_cast<const RkPointEndEffector*>(endEffector) != nullptr;
      const int index = arm->controller.addEndEffector(
          "set" + std::to_string(s) + "/" + std::to_string(e), endEffector->linkIdentifier(),
          point ? RkArmController::EndEffectorKind::Point : RkArmController::EndEffectorKind::Frame, error);
      if (index < 0) return -1;
      if (!arm->controller.setActive(index, s == sets.activeEndEffectorSet(), error)) return -1;
      arm->effectorIndex[s].push_back(index);
    }
  }
  arm->endEffectorSetList.fillDefaultMaximumAccelerations();
  const RkSimulatedEndEffectorSets::RealVector& home = sets.homeJointPositions();
  if (home.size() > 0) {
    if (home.size() != static_cast<RkU32>(chain.jointCount())) {
      error = name + ": " + std::to_string(home.size()) + " home joint positions for " +
              std::to_string(chain.jointCount()) + " joints";
      return -1;
    }
    Eigen::VectorXd q(chain.jointCount());
    for (RkU32 j = 0; j < home.size(); ++j) q[j] = home[j].value();
    if (!arm->controller.setJointPositions(q, error)) return -1;
  }
  const RkU32 active = static_cast<RkU32>(arm->effectorIndex[sets.activeEndEffectorSet()].size());
  arm->placementAchieved.assign(active, 0);
  arm->gaveUp.assign(active, 0);
  arm->goalReached.assign(active, 0);
  // One position per link of the model: the joints', then zero for an immobile tip link.
  const RkIndividualManipulator model = modelOf(name, chain);
  arm->jointPositions.resize(model.links().size());
  arm->jointVelocities.resize(model.links().size());
  m_arms.push_back(std::move(arm));
  m_manipulators.pushBack(model);
  RkPositionState state;
  state.setBasePlacement(basePlacement);
  m_positionStates.pushBack(state);
  RkManipulatorEndEffectorPlacement placement;
  placement.setOffsetTransformations(RkManipulatorEndEffectorPlacement::TransformationVector(active));
  m_currentPlacements.pushBack(placement);
  const RkU32 index = static_cast<RkU32>(m_arms.size() - 1);
  refresh(index);
  return static_cast<int>(index);
}

RkArmController& RkSimulatedSystem::armController(RkU32 arm) {
  return m_arms.at(arm)->controller;
}

RkU32 RkSimulatedSystem::armCount() const {
  return static_cast<RkU32>(m_arms.size());
}

RkU32 RkSimulatedSystem::placementAchievedCount(RkU32 arm, RkU32 endEffector) const {
  if (arm >= m_arms.size() || endEffector >= m_arms[arm]->placementAchieved.size()) return 0;
  return m_arms[arm]->placementAchieved[endEffector];
}

bool RkSimulatedSystem::command(RkU32 armIndex, const RkManipulatorEndEffectorPlacement& placement,
                                std::string& error) {
  if (armIndex >= m_arms.size()) {
    error = "no arm " + std::to_string(armIndex);
    return false;
  }
  Arm& arm = *m_arms[armIndex];
  const std::vector<int>& driven = arm.effectorIndex[arm.activeEndEffectorSetIndex()];
  const auto& goals = placement.offsetTransformations();
  const RkU32 count = std::min<RkU32>(goals.size(), static_cast<RkU32>(driven.size()));
  const Eigen::Isometry3d baseInverse = arm.baseIsometry.inverse();
  for (RkU32 i = 0; i < count; ++i) {
    if (!arm.controller.setGoal(driven[i], baseInverse * toIsometry(goals[i]), error)) return false;
  }
  return true;
}

bool RkSimulatedSystem::step(double dt, std::string& error) {
  for (RkU32 i = 0; i < m_arms.size(); ++i) {
    Arm& arm = *m_arms[i];
    for (RkU32 e = 0; e < arm.gaveUp.size(); ++e) {
      if (!arm.gaveUp[e]) continue;
      arm.gaveUp[e] = 0;
      if (!arm.controller.restartConvergenceWatch(arm.effectorIndex[arm.activeEndEffectorSetIndex()][e],
                                                  error))
        return false;
    }
    if (!arm.controller.step(dt, error)) return false;
    refresh(i);
  }
  return true;
}

bool RkSimulatedSystem::canReach(RkU32 armIndex, RkU32 set, RkU32 endEffector,
                                 const RkCoordinateSystemTransformation& goal) const {
  if (armIndex >= m_arms.size()) return false;
  const Arm& arm = *m_arms[armIndex];
  if (set >= arm.effectorIndex.size() || endEffector >= arm.effectorIndex[set].size()) return false;
  return arm.controller.canReach(arm.effectorIndex[set][endEffector],
                                 arm.baseIsometry.inverse() * toIsometry(goal));
}

RkU32 RkSimulatedSystem::goalReachedCount(RkU32 arm, RkU32 endEffector) const {
  if (arm >= m_arms.size() || endEffector >= m_arms[arm]->goalReached.size()) return 0;
  return m_arms[arm]->goalReached[endEffector];
}

bool RkSimulatedSystem::linkOrigins(RkU32 armIndex, std::vector<Eigen::Vector3d>& origins) const {
  if (armIndex >= m_arms.size()) return false;
  const Arm& arm = *m_arms[armIndex];
  const RkKinematicChain& chain = arm.controller.chain();
  const Eigen::VectorXd& q = arm.controller.jointPositions();
  origins.resize(chain.jointCount() + 2);
  origins.front() = arm.baseIsometry.translation();
  Eigen::Isometry3d placement;
  for (int joint = 0; joint < chain.jointCount(); ++joint) {
    chain.linkPlacement(q, chain.jointLinkIndex(joint), placement);
    origins[joint + 1] = arm.baseIsometry * placement.translation();
  }
  chain.tipPlacement(q, placement);
  origins.back() = arm.baseIsometry * placement.translation();
  return true;
}

void RkSimulatedSystem::refresh(RkU32 index) {
  Arm& arm = *m_arms[index];
  RkManipulatorEndEffectorPlacement& placement = m_currentPlacements[index];
  for (RkU32 i = 0; i < placement.offsetTransformations().size(); ++i) {
    if (const RkArmController::EndEffectorStatus* status = arm.statusOf(i)) {
      placement.setOffsetInRelative(i, toTransformation(arm.baseIsometry * status->placement));
    }
  }
  const Eigen::VectorXd& q = arm.controller.jointPositions();
  const Eigen::VectorXd& qd = arm.controller.jointVelocities();
  for (RkU32 j = 0; j < static_cast<RkU32>(q.size()); ++j) {
    arm.jointPositions[j] = q[j];
    arm.jointVelocities[j] = qd[j];
  }
  // Same sizes as before, so these copies allocate nothing.
  m_positionStates[index].setJointPositions(arm.jointPositions);
  m_positionStates[index].setJointVelocities(arm.jointVelocities);
}

RkU32 RkSimulatedSystem::manipulatorControllerCount() const {
  return armCount();
}

RkManipulatorController* RkSimulatedSystem::manipulatorController(RkU32 index) {
  return index < m_arms.size() ? m_arms[index].get() : nullptr;
}

const RkXmlVectorType<RkManipulatorEndEffectorPlacement>& RkSimulatedSystem::currentEndEffectorPlacements()
    const {
  return m_currentPlacements;
}

RkBoolean RkSimulatedSystem::actualPlacement(RkU32 manipulatorIndex, RkU32 endEffectorIndex,
                                             RkCoordinateSystemTransformation& placement) const {
  if (manipulatorIndex >= m_currentPlacements.size()) return false;
  const auto& placements = m_currentPlacements[manipulatorIndex].offsetTransformations();
  if (endEffectorIndex >= placements.size()) return false;
  placement = placements[endEffectorIndex];
  return true;
}

RkReal RkSimulatedSystem::lookAheadTime() const {
  RkReal longest = 0.0;
  for (const auto& arm : m_arms) longest = std::max(longest, arm->controller.lookAheadTime());
  return longest;
}
