#include "sequencing/RkPoseSet.h"

#include "xml/RkXmlVectorType.h"

// Lists of pose sets are part of the vocabulary's types.
template class RkXmlVectorType<RkPoseSet>;

RkBoolean RkPoseSet::addPose(const RkXmlBasicType<std::string>& name,
                             const RkCoordinateSystemTransformation& pose) {
  if (m_poseMap.lookupPointer(name)) return false;
  m_poseMap.add(name, pose);
  return true;
}

RkBoolean RkPoseSet::updatePose(const RkXmlBasicType<std::string>& name,
                                const RkCoordinateSystemTransformation& pose) {
  if (!m_poseMap.lookupPointer(name)) return false;
  m_poseMap.add(name, pose);
  return true;
}
