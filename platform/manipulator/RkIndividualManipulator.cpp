#include "manipulator/RkIndividualManipulator.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkManipulatorActivePositionState.h"
#include "manipulator/RkManipulatorTokens.h"

const RkManipulatorLink* RkIndividualManipulator::link(const std::string& identifier) const {
  const RkU32 index = findLink(identifier);
  return index < m_links.size() ? &m_links[index] : nullptr;
}

RkCoordinateSystemTransformation RkIndividualManipulator::manipulatorFrame(
    const RkManipulatorActivePositionState& state) const {
  return state.positionState().basePlacement() * m_basePlacement;
}

RkBoolean RkIndividualManipulator::primaryFrame(const std::string& linkIdentifier,
                                                const RkManipulatorActivePositionState& state,
                                                RkCoordinateSystemTransformation& frame) const {
  const RkU32 index = linkForState("primaryFrame", linkIdentifier, state);
  return index < m_links.size() && state.primaryFrame(index, frame);
}

RkBoolean RkIndividualManipulator::dhFrame(const std::string& linkIdentifier,
                                           const RkManipulatorActivePositionState& state,
                                           RkCoordinateSystemTransformation& frame) const {
  const RkU32 index = linkForState("dhFrame", linkIdentifier, state);
  return index < m_links.size() && state.dhFrame(index, frame);
}

void RkIndividualManipulator::registerComponents() {
  registerComponent(RkManipulator::RkNameToken, &m_name, "the manipulator's name");
  registerComponent(RkManipulator::RkBasePlacementToken, &m_basePlacement,
                    "where the manipulator's base stands in the system frame (m, quaternion w x y z)");
  registerComponent(RkManipulator::RkLinksToken, &m_links, "the links, each after its parent");
}

RkU32 RkIndividualManipulator::findLink(const std::string& identifier) const {
  RkU32 index = 0;
  while (index < m_links.size() && m_links[index].identifier() != identifier) ++index;
  return index;
}

RkU32 RkIndividualManipulator::linkForState(const char* caller, const std::string& identifier,
                                            const RkManipulatorActivePositionState& state) const {
  if (&state.manipulator() != this) {
    Rk::Print::write(
        4,
        "RkIndividualManipulator::%s: the position state given to \"%s\" was made for another manipulator\n",
        caller, name().c_str());
    return m_links.size();
  }
  const RkU32 index = findLink(identifier);
  if (index == m_links.size()) {
    Rk::Print::write(4, "RkIndividualManipulator::%s: manipulator \"%s\" has no link \"%s\"\n", caller,
                     name().c_str(), identifier.c_str());
  }
  return index;
}
