// A plug-in for the plug-in loading tests: loading it adds RkTestTriangle to the family of
// RkTestShapeContainer, so that documents may then hold triangles wherever a test shape may stand.
#include "platform/xml/RkXmlTestObjects.h"

namespace {

const RkToken RkTestTriangleToken = RkXml::qualifiedToken("testTriangle");

class RkTestTriangle : public RkXmlConcreteClass<RkTestTriangle, RkTestShape, RkTestTriangleToken> {
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
