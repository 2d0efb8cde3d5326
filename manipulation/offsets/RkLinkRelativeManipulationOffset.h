#pragma once
// Places an end effector relative to a link of the manipulator as the link stands now; the goal follows the
// link every cycle. Hold the tool 5 cm beyond the wrist's DH frame, along its z axis:
//   <linkRelativeManipulationOffset><relativeOffset><translation>0 0 0.05</translation>
//   <orientation>1 0 0 0</orientation></relativeOffset>
//   <manipulationFrameXAxisVector>1 0 0</manipulationFrameXAxisVector>
//   <manipulationFrameXAxisSourceFrame>objectFrame</manipulationFrameXAxisSourceFrame>
//   <manipulationFrameZAxisVector>0 0 1</manipulationFrameZAxisVector>
//   <manipulationFrameZAxisSourceFrame>objectFrame</manipulationFrameZAxisSourceFrame>
//   <linkFrameType>dhFrame</linkFrameType><linkIdentifiers>wrist_3_link</linkIdentifiers>
//   </linkRelativeManipulationOffset>
#include <string>

#include "offsets/RkLinkRelativeManipulationOffsetState.h"
#include "offsets/RkRelativeManipulationOffsetKind.h"
#include "xml/RkXmlBasicType.h"

class RkLinkRelativeManipulationOffset
    : public RkRelativeManipulationOffsetKind<RkLinkRelativeManipulationOffset,
                                              RkLinkRelativeManipulationOffsetState,
                                              RkManipulation::RkLinkRelativeManipulationOffsetToken> {
 public:
  // Which frame of the link is the primary frame: 0 its primary frame, any other value its DH frame.
  enum LinkFrameType : RkU32 { PrimaryFrame = 0, DhFrame = 1 };

  RkLinkRelativeManipulationOffset();

  virtual RkU32 linkFrameType() const { return m_linkFrameType; }
  virtual void setLinkFrameType(RkU32 type) { m_linkFrameType.setValue(type); }
  virtual const std::string& linkIdentifier() const { return m_linkIdentifier.value(); }
  virtual void setLinkIdentifier(const std::string& identifier) { m_linkIdentifier = identifier; }
  // The link's frame in the system frame for the manipulator's current position state. Real-time safe.
  virtual RkBoolean calculatePrimaryFrame(const RkManipulationUpdateParams& params,
                                          const RkManipulationSequence& sequence, RkU32 frameIndex,
                                          RkU32 endEffectorIndex,
                                          RkCoordinateSystemTransformation& primaryFrame) const;

  // Hook of the relative kinds.
  void reportInvalidManipulationFrame(const std::string& problem) const;

 protected:
  void registerComponents() override {
    RkRelativeManipulationOffset::registerComponents();
    registerComponent(RkManipulation::RkLinkFrameTypeToken, &m_linkFrameType,
                      "which frame of the link is the primary frame: primaryFrame or dhFrame");
    registerComponent(RkManipulation::RkLinkIdentifiersToken, &m_linkIdentifier,
                      "the identifier (name) of the link the goal is relative to");
  }

 private:
  RkXmlEnumType<RkU32> m_linkFrameType;
  RkXmlBasicType<std::string> m_linkIdentifier;
};
