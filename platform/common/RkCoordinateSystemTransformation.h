#pragma once
// A placement of one frame in another: a translation and an orientation. a * b applies b, then a.
//   <coordinateSystemTransformation><translation>0.4 0 0.3</translation><orientation>1 0 0 0</orientation>
//   </coordinateSystemTransformation>
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlOrientation.h"
#include "xml/RkXmlVector.h"

namespace RkFoundCommon {
extern const RkToken RkCoordinateSystemTransformationToken;
extern const RkToken RkTranslationToken;
extern const RkToken RkOrientationToken;
}  // namespace RkFoundCommon

class RkCoordinateSystemTransformation
    : public RkXmlConcreteClass<RkCoordinateSystemTransformation, RkXmlCompoundType,
                                RkFoundCommon::RkCoordinateSystemTransformationToken> {
 public:
  // The identity.
  RkCoordinateSystemTransformation() = default;
  RkCoordinateSystemTransformation(const RkVector& translation, const RkOrientation& orientation)
      : m_translation(translation), m_orientation(orientation) {}

  const RkVector& translation() const { return m_translation; }
  const RkOrientation& orientation() const { return m_orientation; }
  void setTranslation(const RkVector& translation) { static_cast<RkVector&>(m_translation) = translation; }
  void setOrientation(const RkOrientation& orientation) {
    static_cast<RkOrientation&>(m_orientation) = orientation;
  }

  RkCoordinateSystemTransformation operator*(const RkCoordinateSystemTransformation& other) const;
  // The point, given in the inner frame, expressed in the outer frame.
  RkVector operator*(const RkVector& point) const { return m_orientation * point + m_translation; }
  RkCoordinateSystemTransformation inverse() const;

  // Translations within tolerance (length unit) and orientations within angleTolerance (radians).
  bool approxEq(const RkCoordinateSystemTransformation& other, RkReal tolerance, RkReal angleTolerance) const;
  bool approxEq(const RkCoordinateSystemTransformation& other, RkReal tolerance) const {
    return approxEq(other, tolerance, tolerance);
  }

 protected:
  void registerComponents() override;

 private:
  RkXmlVector m_translation;
  RkXmlOrientation m_orientation;
};
