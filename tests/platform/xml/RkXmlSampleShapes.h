#pragma once
// A small polymorphic family for the container tests: circles and squares in a shape container.
#include "foundation/RkBaseExpressionTreeElement.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlFamilyContainer.h"
#include "xml/RkXmlTokens.h"

class RkSampleShape : public RkBaseExpressionTreeElement {};

inline const RkToken RkSampleCircleToken = RkXml::qualifiedToken("sampleCircle");

class RkSampleCircle : public RkXmlConcreteClass<RkSampleCircle, RkSampleShape, RkSampleCircleToken> {
 public:
  explicit RkSampleCircle(RkReal radius = 1.0) : m_radius(radius) {}
  void setRadius(RkReal radius) { m_radius = radius; }

 protected:
  void registerComponents() override { registerComponent(RkXml::qualifiedToken("radius"), &m_radius); }

 private:
  RkXmlBasicType<RkReal> m_radius;
};

inline const RkToken RkSampleSquareToken = RkXml::qualifiedToken("sampleSquare");

class RkSampleSquare : public RkXmlConcreteClass<RkSampleSquare, RkSampleShape, RkSampleSquareToken> {
 public:
  explicit RkSampleSquare(RkReal side = 1.0, const std::string& name = "") : m_side(side), m_name(name) {}

 protected:
  void registerComponents() override {
    registerComponent(RkXml::qualifiedToken("side"), &m_side);
    registerComponent(RkXml::qualifiedToken("name"), &m_name);
  }

 private:
  RkXmlBasicType<RkReal> m_side;
  RkXmlBasicType<std::string> m_name;
};

inline const RkToken RkSampleShapeContainerToken = RkXml::qualifiedToken("sampleShapeContainer");

class RkSampleShapeContainer
    : public RkXmlFamilyContainer<RkSampleShapeContainer, RkSampleShape, RkSampleShapeContainerToken> {
 public:
 protected:
  void registerComponentCreators() override {
    registerComponentCreator(RkSampleCircle::classToken(), &RkSampleCircle::creator);
    registerComponentCreator(RkSampleSquare::classToken(), &RkSampleSquare::creator);
  }
};
