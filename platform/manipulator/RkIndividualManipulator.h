#pragma once
// The kinematic description of one manipulator: its name, where it is mounted on its base, and its links,
// each moved by one joint (joint i moves link i). Its frames in the system frame, for a given state:
//   manipulator frame = position state's base placement * base placement
//   a link's primary and DH frames as RkManipulatorLink describes, from the manipulator frame
//   <individualManipulator><name>left</name><basePlacement>...</basePlacement>
//   <links count="2"><element>...</element><element>...</element></links></individualManipulator>
#include <string>

#include "common/RkCoordinateSystemTransformation.h"
#include "manipulator/RkManipulatorLink.h"
#include "manipulator/RkManipulatorTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

class RkManipulatorActivePositionState;

class RkIndividualManipulator : public RkXmlConcreteClass<RkIndividualManipulator, RkXmlCompoundType,
                                                          RkManipulator::RkIndividualManipulatorToken> {
 public:
  typedef RkXmlVectorType<RkManipulatorLink> LinkVector;

  RkIndividualManipulator() = default;

  const std::string& name() const { return m_name.value(); }
  void setName(const std::string& name) { m_name = name; }
  // Where the manipulator is mounted, in the frame of the base its position state places.
  const RkCoordinateSystemTransformation& basePlacement() const { return m_basePlacement; }
  void setBasePlacement(const RkCoordinateSystemTransformation& placement) { m_basePlacement = placement; }
  const LinkVector& links() const { return m_links; }
  void setLinks(const LinkVector& links) { m_links = links; }
  void addLink(const RkManipulatorLink& link) { m_links.pushBack(link); }

  // The first link with identifier, or null when none has it; callers say what that means to them.
  const RkManipulatorLink* link(const std::string& identifier) const;

  // The manipulator's own frame in the system frame for the state.
  RkCoordinateSystemTransformation manipulatorFrame(const RkManipulatorActivePositionState& state) const;
  // Sets frame to the primary or DH frame of the link with identifier, in the system frame, for the state.
  // False, with one printed line and frame unchanged, for an unknown identifier, a state made for another
  // manipulator or a state whose frames cannot be computed.
  RkBoolean primaryFrame(const std::string& linkIdentifier, const RkManipulatorActivePositionState& state,
                         RkCoordinateSystemTransformation& frame) const;
  RkBoolean dhFrame(const std::string& linkIdentifier, const RkManipulatorActivePositionState& state,
                    RkCoordinateSystemTransformation& frame) const;

 protected:
  void registerComponents() override;

 private:
  // The index of the first link with identifier, or the link count when none has it.
  RkU32 findLink(const std::string& identifier) const;
  // The index of the link with identifier when state belongs to this manipulator, else the link count; prints
  // one line naming caller when it fails.
  RkU32 linkForState(const char* caller, const std::string& identifier,
                     const RkManipulatorActivePositionState& state) const;

  RkXmlBasicType<std::string> m_name;
  RkCoordinateSystemTransformation m_basePlacement;
  LinkVector m_links;
};
