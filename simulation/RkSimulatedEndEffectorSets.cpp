#include "simulation/RkSimulatedEndEffectorSets.h"

#include <fstream>
#include <memory>

#include "control/RkFrameEndEffector.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlTokens.h"

namespace RkSimulation {
__attribute__((init_priority(101))) const RkToken RkSimulatedEndEffectorSetsToken =
    RkXml::qualifiedToken("simulatedEndEffectorSets");
}

void RkSimulatedEndEffectorSets::registerComponents() {
  static const RkToken home = RkXml::qualifiedToken("homeJointPositions");
  static const RkToken active = RkXml::qualifiedToken("activeEndEffectorSet");
  static const RkToken sets = RkXml::qualifiedToken("endEffectorSets");
  registerComponent(home, &m_homeJointPositions,
                    "the joint positions the simulated arm starts at, rad (m for a prismatic joint)");
  registerComponent(active, &m_activeEndEffectorSet,
                    "index of the end-effector set the controller drives, from 0");
  registerComponent(sets, &m_endEffectorSets, "the end-effector sets of the arm");
}

RkSimulatedEndEffectorSets RkSimulatedEndEffectorSets::tipFrame(const std::string& tipLink) {
  RkFrameEndEffector tip;
  tip.setLinkIdentifier(tipLink);
  RkEndEffectorSet set;
  set.add(tip);
  RkSimulatedEndEffectorSets sets;
  sets.m_endEffectorSets.pushBack(set);
  return sets;
}

std::string RkSimulatedEndEffectorSets::fileFor(const std::string& robotPath) {
  const std::size_t dot = robotPath.rfind('.');
  const std::size_t slash = robotPath.rfind('/');
  const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
  return (hasExtension ? robotPath.substr(0, dot) : robotPath) + ".endeffectors.xml";
}

bool RkSimulatedEndEffectorSets::forRobot(const std::string& robotPath, const std::string& tipLink,
                                          RkSimulatedEndEffectorSets& sets) {
  const std::string path = fileFor(robotPath);
  if (!std::ifstream(path)) {
    sets = tipFrame(tipLink);
    return true;
  }
  sets = RkSimulatedEndEffectorSets();
  return RkXmlReader::readFile(path, sets);
}

void RkSimulatedEndEffectorSets::fillDefaultMaximumAccelerations() {
  for (RkEndEffectorSet& set : m_endEffectorSets.vectorContainer()) {
    RkEndEffectorSet filled;
    for (RkU32 e = 0; e < set.size(); ++e) {
      std::unique_ptr<RkEndEffector> endEffector(static_cast<RkEndEffector*>(set.endEffector(e)->clone()));
      if (!(endEffector->maximumAcceleration() > 0.0)) {
        endEffector->setMaximumAcceleration(kDefaultMaximumAcceleration);
      }
      filled.add(*endEffector);
    }
    set = filled;
  }
}
