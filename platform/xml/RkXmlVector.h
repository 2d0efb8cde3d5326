#pragma once
// A vector of three reals as an XML object, written "x y z": <manipulationFrameZAxisVector>0 0 1</...>.
#include "foundation/RkVector.h"
#include "xml/RkXmlTextType.h"

class RkXmlVector : public RkXmlTextType, public RkVector {
 public:
  RkXmlVector() = default;
  RkXmlVector(RkReal x, RkReal y, RkReal z) : RkVector(x, y, z) {}
  RkXmlVector(const RkVector& vector) : RkVector(vector) {}

  bool operator==(const RkXmlVector& other) const { return RkVector::operator==(other); }
  bool operator!=(const RkXmlVector& other) const { return !(*this == other); }

  RkBoolean equality(const RkXmlObject* other) const override;
  RkXmlObject* newObject() const override { return new RkXmlVector; }
  RkXmlObject* clone() const override { return new RkXmlVector(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken();

  void formatText(std::string& out) const override;
  RkBoolean parseText(std::string_view text) override;
  const char* textDescription() const override { return "three real numbers"; }
  const char* schemaTypeName() const override { return "rkVector3"; }
};
