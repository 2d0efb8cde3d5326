#pragma once
// Moves one end effector through its waypoints one after another, rounding off each corner inside its zone:
//   <waypointSequence><manipulationWaypointVector count="2">
//     <element><desiredPlacement>...</desiredPlacement><zoneRadius>0.02</zoneRadius></element>
//     <element><stopPoint>true</stopPoint><desiredPlacement>...</desiredPlacement></element>
//   </manipulationWaypointVector><endEffectorIndex>0</endEffectorIndex></waypointSequence>
#include "common/RkDataMap.h"
#include "control/RkEndEffectorSet.h"
#include "sequencing/RkManipulationAction.h"
#include "sequencing/RkManipulationTokens.h"
#include "waypoints/RkManipulationWaypointVector.h"
#include "waypoints/RkWaypointSequenceState.h"
#include "xml/RkXmlConcreteClass.h"

class RkWaypointSequence : public RkXmlConcreteClass<RkWaypointSequence, RkManipulationAction,
                                                     RkManipulation::RkWaypointSequenceToken> {
 public:
  // The end-effector set index that selects the controller's active set.
  static constexpr RkU32 kControllerActiveSet = 0xFFFFFFFFu;

  RkBoolean init(RkManipulationActionStateContainer& container) const override;
  // One control step; real-time safe while no waypoint starts, also while a corner curve runs.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    RkManipulationActionState& state) const override;
  RkU32 activeControlDescription(const RkManipulationActionState&) const override {
    return m_controlDescriptionIndex;
  }
  RkU32 activeControlMethod(const RkManipulationActionState&) const override { return m_controlMethodIndex; }
  RkU32 activeEndEffectorSet(const RkManipulationActionState&) const override {
    return m_endEffectorSetIndex;
  }
  // Always the same empty map: waypoints name no values.
  const RkDataMap& dataMap(const RkManipulationActionState&) const override { return m_theNullDataMap; }
  void findDataMapReferences(std::map<std::string, RkReal>&) const override {}
  // The set the set index selects in the controller's sets, or the empty set when it selects none.
  const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                         const RkManipulationActionState& state) const override;
  // The running waypoint's commanded placement; the empty placement when none runs.
  const RkManipulatorEndEffectorPlacement& endEffectorPlacement(
      const RkManipulationActionState& state) const override;
  std::string statusString(const RkManipulationActionState&, const std::string&) const override {
    return std::string();
  }
  // The running waypoint's, or none.
  const RkXmlVectorType<RkXmlBasicType<RkU32>>& profiledPositionEndEffectorIndices(
      const RkManipulationActionState& state) const override;

  virtual void add(const RkManipulationWaypoint& waypoint) { m_waypoints.pushBack(waypoint); }
  // Before index; at or beyond the end it appends.
  virtual void insert(RkU32 index, const RkManipulationWaypoint& waypoint);
  virtual void deleteWaypoint(RkU32 index) { m_waypoints.erase(index); }
  virtual const RkManipulationWaypointVector& waypoints() const { return m_waypoints; }
  virtual RkManipulationWaypointVector& waypoints() { return m_waypoints; }
  virtual void setWaypoints(const RkManipulationWaypointVector& waypoints) { m_waypoints = waypoints; }
  virtual RkU32 controlMethodIndex() const { return m_controlMethodIndex; }
  virtual void setControlMethodIndex(RkU32 index) { m_controlMethodIndex = index; }
  virtual RkU32 endEffectorSetIndex() const { return m_endEffectorSetIndex; }
  virtual void setEndEffectorSetIndex(RkU32 index) { m_endEffectorSetIndex = index; }
  virtual RkU32 controlDescriptionIndex() const { return m_controlDescriptionIndex; }
  virtual void setControlDescriptionIndex(RkU32 index) { m_controlDescriptionIndex = index; }
  virtual RkU32 endEffectorIndex() const { return m_endEffectorIndex; }
  virtual void setEndEffectorIndex(RkU32 index) { m_endEffectorIndex = index; }
  // The waypoint at the state's index, or null past the last.
  virtual const RkManipulationWaypoint* currentWaypoint(const RkManipulationActionState& state) const;
  virtual RkManipulationWaypoint* currentWaypoint(const RkManipulationActionState& state);

 protected:
  void registerComponents() override;

 private:
  RkManipulationWaypointVector m_waypoints;
  RkXmlBasicType<RkU32> m_controlMethodIndex;
  RkXmlBasicType<RkU32> m_endEffectorSetIndex;
  RkXmlBasicType<RkU32> m_controlDescriptionIndex;
  RkXmlBasicType<RkU32> m_endEffectorIndex;

  static const RkDataMap m_theNullDataMap;
  static const RkEndEffectorSet m_theNullEndEffectorSet;
  static const RkXmlVectorType<RkXmlBasicType<RkU32>> m_theNullU32Vector;
};
