#pragma once
// A point of a manipulator that is driven to placements: the link it is fixed to and how hard it may be
// accelerated. Concrete kinds differ in which part of a placement they control, and so in how far an actual
// placement is from a goal.
#include <string>

#include "common/RkCoordinateSystemTransformation.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlCompoundType.h"

class RkEndEffector : public RkXmlCompoundType {
 public:
  RkEndEffector() : m_maximumAcceleration(0.0) {}

  // The identifier of the manipulator link the end effector is fixed to.
  const std::string& linkIdentifier() const { return m_linkIdentifier.value(); }
  void setLinkIdentifier(const std::string& identifier) { m_linkIdentifier = identifier; }
  // The largest acceleration the controller may command here, in length unit per second squared.
  RkReal maximumAcceleration() const { return m_maximumAcceleration; }
  void setMaximumAcceleration(RkReal acceleration) { m_maximumAcceleration = acceleration; }

  // How far actual is from goal in the parts of a placement this end effector controls; never negative.
  virtual RkReal placementError(const RkCoordinateSystemTransformation& actual,
                                const RkCoordinateSystemTransformation& goal) const = 0;

  bool operator==(const RkEndEffector& other) const {
    return RkXmlCompoundType::operator==(other) && m_linkIdentifier == other.m_linkIdentifier &&
           m_maximumAcceleration == other.m_maximumAcceleration;
  }
  bool operator!=(const RkEndEffector& other) const { return !(*this == other); }

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<std::string> m_linkIdentifier;
  RkXmlBasicType<RkReal> m_maximumAcceleration;
};
