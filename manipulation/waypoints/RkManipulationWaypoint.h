#pragma once
// One stop of a waypoint sequence: a goal for the sequence's end effector and a zone around it in which the
// motion rounds the corner towards the next waypoint on a curve instead of stopping there:
//   <manipulationWaypoint><stopPoint>false</stopPoint><desiredPlacement><offsetTransformations count="1">
//     <element><translation>0.4 0 0.3</translation><orientation>0 1 0 0</orientation></element>
//   </offsetTransformations></desiredPlacement><name>corner</name><zoneRadius>0.02</zoneRadius>
//   </manipulationWaypoint>
#include <string>

#include "control/RkManipulatorEndEffectorPlacement.h"
#include "sequencing/RkManipulationStatus.h"
#include "sequencing/RkManipulationTokens.h"
#include "sequencing/RkManipulationUpdateParams.h"
#include "waypoints/RkWaypointInterpolatorContainer.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

class RkPoseSet;
class RkWaypointSequence;
class RkWaypointSequenceState;

class RkManipulationWaypoint : public RkXmlConcreteClass<RkManipulationWaypoint, RkXmlCompoundType,
                                                         RkManipulation::RkManipulationWaypointToken> {
 public:
  // Zone radius 0.1, extended zone radius 0.2, a Bezier interpolator.
  RkManipulationWaypoint();

  virtual RkBoolean stopPoint() const { return m_stopPoint; }
  virtual void setStopPoint(RkBoolean stopPoint) { m_stopPoint = stopPoint; }
  // The desired placement, one entry per end effector of the set.
  virtual const RkManipulatorEndEffectorPlacement& goal() const { return m_desiredPlacement; }
  virtual void setGoal(const RkManipulatorEndEffectorPlacement& goal) { m_desiredPlacement = goal; }
  // The name, and the pose that replaces the goal when the pose set in force holds one by this name.
  virtual const RkXmlBasicType<std::string>& label() const { return m_label; }
  virtual void setLabel(const RkXmlBasicType<std::string>& label) { m_label = label; }
  virtual RkReal zoneRadius() const { return m_zoneRadius; }
  virtual void setZoneRadius(RkReal radius) { m_zoneRadius = radius; }
  virtual RkReal extendedZoneRadius() const { return m_extendedZoneRadius; }
  virtual void setExtendedZoneRadius(RkReal radius) { m_extendedZoneRadius = radius; }
  virtual RkReal xPos() const { return m_xPos; }
  virtual void setXPos(RkReal x) { m_xPos = x; }
  virtual RkU32 endEffectorIndex() const { return m_working.endEffectorIndex; }
  virtual void setEndEffectorIndex(RkU32 index) { m_working.endEffectorIndex = index; }

  // Makes waypoint index of the sequence current: its goal, and the next waypoint's, after the pose set.
  virtual RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                         const RkWaypointSequence& sequence, const RkWaypointSequenceState& state,
                         RkU32 index) const;
  // One control cycle: towards the goal, or round the corner once inside the zone. Real-time safe: it
  // allocates nothing, also while setting up or running a corner; prints only on Failure.
  virtual RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                            const RkWaypointSequence& sequence,
                                            const RkWaypointSequenceState& state, RkU32 index) const;
  // The placement commanded in this cycle.
  virtual const RkManipulatorEndEffectorPlacement& desiredEndEffectorPlacement() const {
    return m_working.goal;
  }
  // The end effector whose position the running corner curve profiles, or none.
  virtual const RkXmlVectorType<RkXmlBasicType<RkU32>>& profiledPositionEndEffectorIndices() const {
    return m_working.profiledPositionEndEffectorIndices;
  }
  // The goal to use: the desired placement, with this waypoint's end effector at the pose of its label when
  // the pose set holds one.
  virtual void findGoalToUse(const RkPoseSet* poseSet) const;

  const RkWaypointInterpolatorContainer& interpolatorContainer() const { return m_interpolatorContainer; }
  void setInterpolatorContainer(const RkWaypointInterpolatorContainer& container) {
    m_interpolatorContainer = container;
  }
  // Stores a copy.
  void setInterpolator(const RkWaypointInterpolator& interpolator) {
    m_interpolatorContainer.setElement(interpolator);
  }

 protected:
  void registerComponents() override;

 private:
  // The values one run works with, changed by the const run-time operations; a copy starts afresh.
  struct WorkingValues {
    WorkingValues() { profiledPositionEndEffectorIndices.reserve(1); }
    WorkingValues(const WorkingValues&) : WorkingValues() {}
    WorkingValues& operator=(const WorkingValues&) { return *this; }

    RkU32 endEffectorIndex = 0;
    const RkManipulationWaypoint* previousWaypoint = nullptr;
    const RkManipulationWaypoint* nextWaypoint = nullptr;
    RkManipulatorEndEffectorPlacement goal;
    // When the corner curve began; -1 while none runs.
    RkReal blendStartTime = -1.0;
    RkManipulatorEndEffectorPlacement goalToUse;
    RkXmlVectorType<RkXmlBasicType<RkU32>> profiledPositionEndEffectorIndices;
    // Set once the approach has been aimed short of the goal for the corner ahead, until the corner ends.
    RkBoolean cornerFlag = false;
  };

  // Whether the goal to use holds a placement for the end effector.
  RkBoolean hasGoalToUseFor(RkU32 endEffectorIndex) const;
  // Starts the corner curve from the end effector's actual placement past the goal towards the next goal.
  void setUpCorner(RkReal time, const RkCoordinateSystemTransformation& actual,
                   const RkVector& linearVelocity, RkReal maximumAcceleration,
                   RkWaypointInterpolator& interpolator) const;
  // Aims the approach short of the goal, the more the sharper the corner ahead.
  void pullBackGoal(const RkVector& actualPosition) const;

  RkXmlBasicType<RkBoolean> m_stopPoint;
  RkManipulatorEndEffectorPlacement m_desiredPlacement;
  RkXmlBasicType<std::string> m_label;
  RkXmlBasicType<RkReal> m_zoneRadius;
  RkXmlBasicType<RkReal> m_extendedZoneRadius;
  // Configured afresh for every corner, so changed by the const run-time operations.
  mutable RkWaypointInterpolatorContainer m_interpolatorContainer;
  RkXmlBasicType<RkReal> m_xPos;
  mutable WorkingValues m_working;
};
