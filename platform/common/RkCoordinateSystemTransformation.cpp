#include "common/RkCoordinateSystemTransformation.h"

#include "xml/RkXmlTokens.h"

namespace RkFoundCommon {
__attribute__((init_priority(101))) const RkToken RkCoordinateSystemTransformationToken =
    RkXml::qualifiedToken("coordinateSystemTransformation");
__attribute__((init_priority(101))) const RkToken RkTranslationToken = RkXml::qualifiedToken("translation");
__attribute__((init_priority(101))) const RkToken RkOrientationToken = RkXml::qualifiedToken("orientation");
}  // namespace RkFoundCommon

RkCoordinateSystemTransformation RkCoordinateSystemTransformation::operator*(
    const RkCoordinateSystemTransformation& other) const {
  return RkCoordinateSystemTransformation(m_orientation * other.translation() + m_translation,
                                          m_orientation * other.orientation());
}

RkCoordinateSystemTransformation RkCoordinateSystemTransformation::inverse() const {
  const RkOrientation inverted = m_orientation.inverse();
  return RkCoordinateSystemTransformation(-(inverted * m_translation), inverted);
}

bool RkCoordinateSystemTransformation::approxEq(const RkCoordinateSystemTransformation& other,
                                                RkReal tolerance, RkReal angleTolerance) const {
  return (m_translation - other.translation()).norm() <= tolerance &&
         m_orientation.approxEq(other.orientation(), angleTolerance);
}

void RkCoordinateSystemTransformation::registerComponents() {
  registerComponent(RkFoundCommon::RkTranslationToken, &m_translation, "position x y z, m");
  registerComponent(RkFoundCommon::RkOrientationToken, &m_orientation,
                    "rotation as a unit quaternion w x y z");
}
