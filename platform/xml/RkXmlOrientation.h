#pragma once
// An orientation as an XML object, written as the unit quaternion "w x y z": <orientation>1 0 0
// 0</orientation>.
#include "foundation/RkOrientation.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlTextType.h"
#include "xml/RkXmlTokens.h"

class RkXmlOrientation
    : public RkXmlConcreteClass<RkXmlOrientation, RkXmlTextType, RkXml::RkOrientationTypeToken>,
      public RkOrientation {
 public:
  RkXmlOrientation() = default;
  RkXmlOrientation(const RkOrientation& orientation) : RkOrientation(orientation) {}

  bool operator==(const RkXmlOrientation& other) const { return RkOrientation::operator==(other); }
  bool operator!=(const RkXmlOrientation& other) const { return !(*this == other); }

  void formatText(std::string& out) const override;
  // Any non-zero quaternion is accepted and normalised.
  RkBoolean parseText(std::string_view text) override;
  const char* textDescription() const override {
    return "four real numbers w x y z of a non-zero quaternion";
  }
  const char* schemaTypeName() const override { return "rkQuaternion"; }
};
