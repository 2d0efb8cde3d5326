#pragma once
// A small polymorphic family for the container tests: circles and squares in a shape container.
#include "foundation/RkBaseExpressionTreeElement.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlFamilyContainer.h"
#include "xml/RkXmlTokens.h"

class RkSampleShape : public RkBaseExpressionTreeElement {};

class RkSampleCircle : public RkXmlConcreteClass<RkSampleCircle, RkSampleShape> {
 public:
  explicit RkSampleCircle(RkReal radius = 1.0) : m_radius(radius) {}
  bool operator==(const RkSampleCircle& other) const {
    return RkSampleShape::operator==(other) && m_radius == other.m_radius;
  }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("sampleCircle");
    return token;
  }
  void setRadius(RkReal radius) { m_radius = radius; }

 protected:
  void registerComponents() override { registerComponent(RkXml::qualifiedToken("radius"), &m_radius); }

 private:
  RkXmlBasicType<RkReal> m_radius;
};

class RkSampleSquare : public RkXmlConcreteClass<RkSampleSquare, RkSampleShape> {
 public:
  explicit RkSampleSquare(RkReal side = 1.0, const std::string& name = "") : m_side(side), m_name(name) {}
  bool operator==(const RkSampleSquare& other) const {
    return RkSampleShape::operator==(other) && m_side == other.m_side && m_name == other.m_name;
  }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("sampleSquare");
    return token;
  }

 protected:
  void registerComponents() override {
    registerComponent(RkXml::qualifiedToken("side"), &m_side);
    registerComponent(RkXml::qualifiedToken("name"), &m_name);
  }

 private:
  RkXmlBasicType<RkReal> m_side;
  RkXmlBasicType<std::string> m_name;
};

class RkSampleShapeContainer : public RkXmlFamilyContainer<RkSampleShapeContainer, RkSampleShape> {
 public:
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("sampleShapeContainer");
    return token;
  }

 protected:
  void registerComponentCreators() override {
    registerComponentCreator(RkSampleCircle::classToken(), &RkSampleCircle::creator);
    registerComponentCreator(RkSampleSquare::classToken(), &RkSampleSquare::creator);
  }
};
