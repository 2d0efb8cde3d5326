#pragma once
// The end-effector sets of a simulated arm and the posture it starts in, read from a small file beside its
// robot description (ur5e.urdf -> ur5e.endeffectors.xml); without one, a single frame end effector on the
// tip link and all joints at zero. An end effector whose set-up names no maximumAcceleration (or one that is
// not positive) is driven with kDefaultMaximumAcceleration.
//   <simulatedEndEffectorSets>
//     <homeJointPositions count="6"><group>0 -1.57 1.57 -1.57 -1.57 0</group></homeJointPositions>
//     <activeEndEffectorSet>0</activeEndEffectorSet>
//     <endEffectorSets count="1"><element><endEffectors count="1"><element>
//       <frameEndEffector><linkIdentifier>tool0</linkIdentifier>...</frameEndEffector>
//     </element></endEffectors></element></endEffectorSets>
//   </simulatedEndEffectorSets>
#include <string>

#include "control/RkEndEffectorSet.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

namespace RkSimulation {
extern const RkToken RkSimulatedEndEffectorSetsToken;
}

class RkSimulatedEndEffectorSets : public RkXmlConcreteClass<RkSimulatedEndEffectorSets, RkXmlCompoundType,
                                                             RkSimulation::RkSimulatedEndEffectorSetsToken> {
 public:
  typedef RkXmlVectorType<RkXmlBasicType<RkReal>> RealVector;

  // One frame end effector on tipLink, active.
  static RkSimulatedEndEffectorSets tipFrame(const std::string& tipLink);
  // The sets in the file beside robotPath, or tipFrame when there is none; false (one line printed) when the
  // file exists but cannot be read.
  static bool forRobot(const std::string& robotPath, const std::string& tipLink,
                       RkSimulatedEndEffectorSets& sets);
  // The file that forRobot looks for.
  static std::string fileFor(const std::string& robotPath);

  // The maximum acceleration (length unit per second squared) of an end effector whose set-up names none: a
  // moderate tool acceleration, well within what the simulated controller's speed caps allow.
  static constexpr RkReal kDefaultMaximumAcceleration = 1.2;
  // Gives every end effector without a positive maximum acceleration the default; the sets must hold no empty
  // entry.
  void fillDefaultMaximumAccelerations();

  // Joint positions to start from; empty means all zero.
  const RealVector& homeJointPositions() const { return m_homeJointPositions; }
  void setHomeJointPositions(const RealVector& positions) { m_homeJointPositions = positions; }
  RkU32 activeEndEffectorSet() const { return m_activeEndEffectorSet; }
  void setActiveEndEffectorSet(RkU32 index) { m_activeEndEffectorSet = index; }
  const RkXmlVectorType<RkEndEffectorSet>& endEffectorSets() const { return m_endEffectorSets; }
  void setEndEffectorSets(const RkXmlVectorType<RkEndEffectorSet>& sets) { m_endEffectorSets = sets; }

 protected:
  void registerComponents() override;

 private:
  RealVector m_homeJointPositions;
  RkXmlBasicType<RkU32> m_activeEndEffectorSet;
  RkXmlVectorType<RkEndEffectorSet> m_endEffectorSets;
};
