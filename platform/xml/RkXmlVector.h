#pragma once
// A vector of three reals as an XML object, written "x y z": <manipulationFrameZAxisVector>0 0 1</...>.
#include "foundation/RkVector.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlTextType.h"
#include "xml/RkXmlTokens.h"

class RkXmlVector : public RkXmlConcreteClass<RkXmlVector, RkXmlTextType, RkXml::RkVector3Token>,
                    public RkVector {
 public:
  RkXmlVector() = default;
  RkXmlVector(RkReal x, RkReal y, RkReal z) : RkVector(x, y, z) {}
  RkXmlVector(const RkVector& vector) : RkVector(vector) {}

  bool operator==(const RkXmlVector& other) const { return RkVector::operator==(other); }
  bool operator!=(const RkXmlVector& other) const { return !(*this == other); }

  void formatText(std::string& out) const override;
  RkBoolean parseText(std::string_view text) override;
  const char* textDescription() const override { return "three real numbers"; }
  const char* schemaTypeName() const override { return "rkVector3"; }
};
