// A plug-in for the plug-in loading tests: loading it adds RkTestTriangle to the family of
// RkTestShapeContainer, so that documents may then hold triangles wherever a test shape may stand.
#include "platform/xml/RkXmlTestObjects.h"

namespace {

class RkTestTriangle : public RkTestShape {
 public:
  bool operator==(const RkTestTriangle& other) const {
    return m_base == other.m_base && m_height == other.m_height;
  }
  RkBoolean equality(const RkXmlObject* other) const override {
    const auto* same = dynamic_cast<const RkTestTriangle*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override { return new RkTestTriangle; }
  RkXmlObject* clone() const override { return new RkTestTriangle(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("testTriangle");
    return token;
  }
  static RkXmlObject* creator() { return new RkTestTriangle; }

 protected:
  void registerComponents() override {
    static const RkToken base = RkXml::qualifiedToken("base");
    static const RkToken height = RkXml::qualifiedToken("height");
    registerComponent(base, &m_base);
    registerComponent(height, &m_height);
  }

 private:
  RkXmlBasicType<RkReal> m_base;
  RkXmlBasicType<RkReal> m_height;
};

// Runs when the library is loaded.
[[maybe_unused]] const bool registered = [] {
  RkXmlBaseVariableCompoundType::registerFamilyCreator(
      RkTestShapeContainer::classToken(), RkTestTriangle::classToken(), &RkTestTriangle::creator);
  return true;
}();

}  // namespace
