#pragma once
// A small polymorphic family for the container tests: circles and squares in a shape container.
#include "foundation/RkBaseExpressionTreeElement.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlTokens.h"
#include "xml/RkXmlVariableElementType.h"

class RkSampleShape : public RkBaseExpressionTreeElement {
 public:
  bool operator==(const RkSampleShape& other) const { return RkBaseExpressionTreeElement::operator==(other); }
};

class RkSampleCircle : public RkSampleShape {
 public:
  explicit RkSampleCircle(RkReal radius = 1.0) : m_radius(radius) {}
  bool operator==(const RkSampleCircle& other) const {
    return RkSampleShape::operator==(other) && m_radius == other.m_radius;
  }
  RkBoolean equality(const RkXmlObject* other) const override {
    const auto* same = dynamic_cast<const RkSampleCircle*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override { return new RkSampleCircle; }
  RkXmlObject* clone() const override { return new RkSampleCircle(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("sampleCircle");
    return token;
  }
  static RkXmlObject* creator() { return new RkSampleCircle; }
  void setRadius(RkReal radius) { m_radius = radius; }

 protected:
  void registerComponents() override { registerComponent(RkXml::qualifiedToken("radius"), &m_radius); }

 private:
  RkXmlBasicType<RkReal> m_radius;
};

class RkSampleSquare : public RkSampleShape {
 public:
  explicit RkSampleSquare(RkReal side = 1.0, const std::string& name = "") : m_side(side), m_name(name) {}
  bool operator==(const RkSampleSquare& other) const {
    return RkSampleShape::operator==(other) && m_side == other.m_side && m_name == other.m_name;
  }
  RkBoolean equality(const RkXmlObject* other) const override {
    const auto* same = dynamic_cast<const RkSampleSquare*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override { return new RkSampleSquare; }
  RkXmlObject* clone() const override { return new RkSampleSquare(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("sampleSquare");
    return token;
  }
  static RkXmlObject* creator() { return new RkSampleSquare; }

 protected:
  void registerComponents() override {
    registerComponent(RkXml::qualifiedToken("side"), &m_side);
    registerComponent(RkXml::qualifiedToken("name"), &m_name);
  }

 private:
  RkXmlBasicType<RkReal> m_side;
  RkXmlBasicType<std::string> m_name;
};

class RkSampleShapeContainer : public RkXmlVariableElementType<RkSampleShape> {
 public:
  bool operator==(const RkSampleShapeContainer& other) const {
    return RkXmlVariableElementType<RkSampleShape>::operator==(other);
  }
  RkBoolean equality(const RkXmlObject* other) const override {
    const auto* same = dynamic_cast<const RkSampleShapeContainer*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override { return new RkSampleShapeContainer; }
  RkXmlObject* clone() const override { return new RkSampleShapeContainer(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("sampleShapeContainer");
    return token;
  }
  static RkSampleShapeContainer nullObject() { return RkSampleShapeContainer(); }

 protected:
  void registerComponentCreators() override {
    registerComponentCreator(RkSampleCircle::classToken(), &RkSampleCircle::creator);
    registerComponentCreator(RkSampleSquare::classToken(), &RkSampleSquare::creator);
  }
};
