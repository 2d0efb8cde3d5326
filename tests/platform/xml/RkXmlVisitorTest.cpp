// The visitor walks containers recording path strings, and stops where mayEnter says no.
#include <gtest/gtest.h>

#include <typeinfo>

#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlSampleShapes.h"
#include "xml/RkXmlMapType.h"
#include "xml/RkXmlVectorType.h"

namespace {

typedef RkXmlVectorType<RkSampleShapeContainer> ShapeVector;

class RecordingVisitor : public RkXmlObjectVisitor {
 public:
  std::vector<std::vector<std::string>> paths;
  int closed = 0;
  bool enterContainers = true;

 protected:
  bool mayEnter() const override {
    const_cast<RecordingVisitor*>(this)->paths.push_back(pathStrings());
    return enterContainers || dynamic_cast<const ShapeVector*>(currentObject()) == nullptr;
  }
  void closeObject(const RkXmlObject*) override { ++closed; }
};

}  // namespace

TEST(RkXmlObjectVisitor, records_type_and_tag_paths_through_every_container) {
  ShapeVector shapes;
  RkSampleShapeContainer circle, empty;
  circle.setElement(RkSampleCircle(1.0));
  shapes.pushBack(circle);
  shapes.pushBack(empty);

  Rk::Print::Capture capture;
  RecordingVisitor visitor;
  visitor.setCurrentToken(RkXml::qualifiedToken("shapes"));
  shapes.accept(&visitor);

  const std::string ns = "http://rkmanipulation.org/namespace/ct#";
  ASSERT_EQ(visitor.paths.size(), 5u);
  EXPECT_EQ(visitor.paths[0],
            (std::vector<std::string>{typeid(const ShapeVector*).name(), ns + "shapes (2)"}));
  EXPECT_EQ(visitor.paths[1],
            (std::vector<std::string>{typeid(const RkXmlVariableElementType<RkSampleShape>*).name(),
                                      ns + "element"}));
  EXPECT_EQ(visitor.paths[2], (std::vector<std::string>{typeid(RkSampleCircle).name(), ns + "sampleCircle"}));
  EXPECT_EQ(visitor.paths[3],
            (std::vector<std::string>{typeid(RkXmlBasicType<RkReal>).name(), ns + "radius"}));
  EXPECT_EQ(visitor.paths[4][1], ns + "element");
  // The empty container prints one line and sends no closing notification.
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].text, "Visitor: RkXmlVariableElementType is non-RkXmlObject\n");
  EXPECT_EQ(visitor.closed, 4);

  RkXmlMapType<RkXmlBasicType<std::string>, RkXmlBasicType<RkReal>> map;
  map.add(RkXmlBasicType<std::string>("a"), 1.0);
  RecordingVisitor mapVisitor;
  mapVisitor.start(map);
  ASSERT_EQ(mapVisitor.paths.size(), 3u);
  EXPECT_EQ(mapVisitor.paths[0][1], ns + "map (1)");
  EXPECT_EQ(mapVisitor.paths[1][1], ns + "key");
  EXPECT_EQ(mapVisitor.paths[2][1], ns + "value");

  RecordingVisitor refusing;
  refusing.enterContainers = false;
  shapes.accept(&refusing);
  EXPECT_EQ(refusing.paths.size(), 1u);
  EXPECT_EQ(refusing.closed, 1);
}
