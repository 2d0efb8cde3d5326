#pragma once
// Named poses kept apart from the tasks that use them, so that a cell's taught poses can be swapped without
// editing its tasks. A pose is a placement in the system frame:
//   <poseSet xmlns="http://rkmanipulation.org/namespace/ct#"><name>cell 1</name><poseMap><element>
//     <key>pick</key><value><translation>0.4 -0.3 0.2</translation><orientation>0 1 0 0</orientation></value>
//   </element></poseMap></poseSet>
#include <string>

#include "common/RkCoordinateSystemTransformation.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlMapType.h"

class RkPoseSet : public RkXmlConcreteClass<RkPoseSet, RkXmlCompoundType, RkManipulation::RkPoseSetToken> {
 public:
  typedef RkXmlMapType<RkXmlBasicType<std::string>, RkCoordinateSystemTransformation> PoseMap;

  virtual const std::string& name() const { return m_name.value(); }
  virtual void setName(const std::string& name) { m_name = name; }
  virtual const PoseMap& poseMap() const { return m_poseMap; }
  virtual void setPoseMap(const PoseMap& poses) { m_poseMap = poses; }
  // Adds a pose under a new name; false, nothing changed, when the name is taken.
  virtual RkBoolean addPose(const RkXmlBasicType<std::string>& name,
                            const RkCoordinateSystemTransformation& pose);
  // Replaces the pose of a name held; false, nothing added, for a name not held.
  virtual RkBoolean updatePose(const RkXmlBasicType<std::string>& name,
                               const RkCoordinateSystemTransformation& pose);
  // Removes the name if held.
  virtual void deletePose(const RkXmlBasicType<std::string>& name) { m_poseMap.erase(name); }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkNameToken, &m_name, "the name of the pose set");
    registerComponent(
        RkManipulation::RkPoseMapToken, &m_poseMap,
        "the poses by name: the placement of every end effector of the manipulator (m, quaternion w x y z)");
  }

 private:
  RkXmlBasicType<std::string> m_name;
  PoseMap m_poseMap;
};
