#include "simulation/RkSimulatedTaskRunner.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <set>

#include "control/RkPointEndEffector.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationSequenceManagerState.h"
#include "sequencing/RkManipulationSequenceState.h"
#include "waypoints/RkWaypointSequenceState.h"
#include "xml/RkXmlReader.h"

// What the run loop needs of a task, whether a manager or a single action.
class RkSimulatedTaskRunner::Task {
 public:
  virtual ~Task() = default;
  virtual bool init() = 0;
  virtual RkManipulationStatus::Enum update(double time, const RkManipulationUpdateParams& params) = 0;
  virtual const RkManipulatorEndEffectorPlacement& placement() const = 0;
  virtual const RkManipulationActionState* actionState() const = 0;
  virtual std::string sequenceName() const = 0;
  virtual std::string frameText() const = 0;
};

class RkSimulatedTaskRunner::ManagerTask : public Task {
 public:
  explicit ManagerTask(const RkManipulationSequenceManager& manager) : m_manager(manager) {}
  bool init() override { return m_manager.init(m_state); }
  RkManipulationStatus::Enum update(double time, const RkManipulationUpdateParams& params) override {
    return m_manager.update(time, params, m_state);
  }
  const RkManipulatorEndEffectorPlacement& placement() const override {
    return m_manager.endEffectorPlacement(m_state);
  }
  const RkManipulationActionState* actionState() const override {
    return m_state.currentSequenceStateContainer().element();
  }
  std::string sequenceName() const override {
    const RkU32 index = m_state.currentSequenceIndex();
    const auto& order = m_manager.sequenceOrder();
    return index < order.size() ? order[index].value() : std::string();
  }
  std::string frameText() const override { return m_manager.statusString(m_state, ""); }

 private:
  const RkManipulationSequenceManager& m_manager;
  RkManipulationSequenceManagerState m_state;
};

class RkSimulatedTaskRunner::ActionTask : public Task {
 public:
  explicit ActionTask(const RkManipulationAction& action) : m_action(action) {}
  bool init() override { return m_action.init(m_state) && m_state.element(); }
  RkManipulationStatus::Enum update(double time, const RkManipulationUpdateParams& params) override {
    return m_action.update(time, params, *m_state.element());
  }
  const RkManipulatorEndEffectorPlacement& placement() const override {
    return m_action.endEffectorPlacement(*m_state.element());
  }
  const RkManipulationActionState* actionState() const override { return m_state.element(); }
  std::string sequenceName() const override { return std::string(); }
  std::string frameText() const override {
    return m_state.element() ? m_action.statusString(*m_state.element(), "") : std::string();
  }

 private:
  const RkManipulationAction& m_action;
  RkManipulationActionStateContainer m_state;
};

namespace {

// The larger of two errors, NaN when either is: an error that cannot be measured is never hidden.
double worse(double a, double b) {
  return std::isnan(a) || std::isnan(b) ? std::nan("") : std::max(a, b);
}

// The commanded placement before the first update and after a failed one: no end effector.
const RkManipulatorEndEffectorPlacement& noPlacement() {
  static const RkManipulatorEndEffectorPlacement none;
  return none;
}

// The one end-effector link of the set-up whose chain from the root holds every other end-effector link.
std::string tipFromSetUp(const std::string& urdfPath, const std::string& setUpPath,
                         const RkSimulatedEndEffectorSets& setUp, std::string& error) {
  std::set<std::string> links;
  for (const RkEndEffectorSet& set : setUp.endEffectorSets().vectorContainer()) {
    for (RkU32 e = 0; e < set.size(); ++e) {
      if (const RkEndEffector* endEffector = set.endEffector(e)) links.insert(endEffector->linkIdentifier());
    }
  }
  std::string list;
  for (const std::string& link : links) {
    std::string ignored;
    const std::unique_ptr<RkKinematicChain> chain =
        RkKinematicChain::fromUrdfFile(urdfPath, "", link, ignored);
    const bool holdsAll = chain && std::all_of(links.begin(), links.end(), [&](const std::string& other) {
                            return chain->linkIndex(other) >= 0;
                          });
    if (holdsAll) return link;
    list += (list.empty() ? "" : ", ") + link;
  }
  if (!links.empty()) {
    error = setUpPath + ": no one chain from the root of " + urdfPath +
            " passes through every end-effector link (" + list + "); name the tip link";
  }
  return std::string();
}

}  // namespace

RkSimulatedTaskRunner::RkSimulatedTaskRunner() : m_commanded(&noPlacement()) {}
RkSimulatedTaskRunner::~RkSimulatedTaskRunner() = default;

bool RkSimulatedTaskRunner::loadRobot(const std::string& urdfPath, const std::string& tipLink,
                                      std::string& error) {
  m_chain.reset();
  m_system.reset();
  m_setUp = RkSimulatedEndEffectorSets();
  const std::string setUpPath = RkSimulatedEndEffectorSets::fileFor(urdfPath);
  const bool hasSetUp = static_cast<bool>(std::ifstream(setUpPath));
  if (hasSetUp && !RkXmlReader::readFile(setUpPath, m_setUp)) {
    error = setUpPath + ": the robot's set-up cannot be read";
    return false;
  }
  std::string tip = tipLink;
  if (tip.empty() && hasSetUp) {
    error.clear();
    tip = tipFromSetUp(urdfPath, setUpPath, m_setUp, error);
    if (!error.empty()) return false;
  }
  std::unique_ptr<RkKinematicChain> chain = RkKinematicChain::fromUrdfFile(urdfPath, "", tip, error);
  if (!chain) return false;
  if (!hasSetUp) m_setUp = RkSimulatedEndEffectorSets::tipFrame(chain->tipLink());
  std::unique_ptr<RkSimulatedSystem> system(new RkSimulatedSystem);
  if (system->addArm("arm", *chain, RkCoordinateSystemTransformation(), m_setUp, error) < 0) {
    error = (hasSetUp ? setUpPath : urdfPath) + ": " + error;
    return false;
  }
  const RkEndEffectorSet& driven = m_setUp.endEffectorSets()[m_setUp.activeEndEffectorSet()];
  m_pointEndEffector.assign(driven.size(), 0);
  for (RkU32 e = 0; e < driven.size(); ++e)
    m_pointEndEffector[e] = dynamic_cast<const RkPointEndEffector*>(driven.endEffector(e)) != nullptr;
  m_chain = std::move(chain);
  m_system = std::move(system);
  m_params = RkManipulationUpdateParams();
  m_params.statedSystem = m_system.get();
  m_params.positionControlSystem = m_system.get();
  return true;
}

bool RkSimulatedTaskRunner::setRate(double cyclesPerSecond) {
  if (!(cyclesPerSecond > 0.0) || !std::isfinite(cyclesPerSecond)) return false;
  m_rate = cyclesPerSecond;
  return true;
}

bool RkSimulatedTaskRunner::setMaxTime(double seconds) {
  if (!(seconds >= 0.0) || !std::isfinite(seconds)) return false;
  m_maxTime = seconds;
  return true;
}

RkManipulationStatus::Enum RkSimulatedTaskRunner::run(const RkManipulationSequenceManager& manager) {
  return runTask(std::unique_ptr<Task>(new ManagerTask(manager)));
}

RkManipulationStatus::Enum RkSimulatedTaskRunner::run(const RkManipulationAction& action) {
  return runTask(std::unique_ptr<Task>(new ActionTask(action)));
}

RkManipulationStatus::Enum RkSimulatedTaskRunner::runTask(std::unique_ptr<Task> task) {
  m_task = std::move(task);
  m_time = 0.0;
  m_cycles = 0;
  m_commanded = &noPlacement();
  m_frameEnded = false;
  m_failure.clear();
  if (!m_system) {
    m_failure = "no robot is loaded";
    return m_status = RkManipulationStatus::Failure;
  }
  if (!m_task->init()) {
    m_failure = "the task cannot start";
    return m_status = RkManipulationStatus::Failure;
  }
  const double dt = 1.0 / m_rate;
  m_status = RkManipulationStatus::InProgress;
  std::string error;
  for (double time = 0.0; time <= m_maxTime; time = m_cycles * dt) {
    m_time = time;
    m_status = m_task->update(time, m_params);
    if (m_status == RkManipulationStatus::Failure) {
      m_commanded = &noPlacement();
      break;
    }
    m_commanded = &m_task->placement();
    if (m_status == RkManipulationStatus::Transition || m_status == RkManipulationStatus::Complete) {
      const auto* sequence = dynamic_cast<const RkManipulationSequenceState*>(m_task->actionState());
      const auto* waypoints = dynamic_cast<const RkWaypointSequenceState*>(m_task->actionState());
      m_frameEnded = sequence    ? sequence->currentFrameIsComplete()
                     : waypoints ? waypoints->currentWaypointIsComplete()
                                 : m_status == RkManipulationStatus::Complete;
      if (m_onTransition) m_onTransition(*this);
      m_frameEnded = false;
    }
    if (m_status == RkManipulationStatus::Complete) break;
    if (!m_system->command(0, *m_commanded, error) || !m_system->step(dt, error)) {
      m_failure = "the simulated arm refused a step: " + error;
      m_status = RkManipulationStatus::Failure;
      break;
    }
    ++m_cycles;
    if (m_onCycle) m_onCycle(*this);
  }
  return m_status;
}

const RkManipulatorEndEffectorPlacement& RkSimulatedTaskRunner::actual() const {
  return m_system ? m_system->currentEndEffectorPlacements()[0] : noPlacement();
}

std::string RkSimulatedTaskRunner::sequenceName() const {
  return m_task ? m_task->sequenceName() : std::string();
}

RkU32 RkSimulatedTaskRunner::frameIndex() const {
  const auto* sequence =
      m_task ? dynamic_cast<const RkManipulationSequenceState*>(m_task->actionState()) : nullptr;
  return sequence ? sequence->currentFrameIndex() : 0;
}

std::string RkSimulatedTaskRunner::frameText() const {
  return m_task ? m_task->frameText() : std::string();
}

void RkSimulatedTaskRunner::placementError(double& position, double& angle) const {
  position = 0.0;
  angle = 0.0;
  const auto& goals = commanded().offsetTransformations();
  const auto& reached = actual().offsetTransformations();
  for (RkU32 i = 0; i < goals.size() && i < reached.size(); ++i) {
    position = worse(position, (goals[i].translation() - reached[i].translation()).norm());
    if (i < m_pointEndEffector.size() && m_pointEndEffector[i]) continue;
    angle = worse(angle, goals[i].orientation().eigen().angularDistance(reached[i].orientation().eigen()));
  }
}
