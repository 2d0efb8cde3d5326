// Behaviour of the three containers: list operations, lenient reading and the exact lines they print.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlSampleShapes.h"
#include "support/RkRoundTrip.h"
#include "xml/RkXmlMapType.h"
#include "xml/RkXmlVectorType.h"

#define NS "http://rkmanipulation.org/namespace/ct#"

namespace {

typedef RkXmlBasicType<std::string> Name;
typedef RkXmlVectorType<Name> NameVector;
typedef RkXmlMapType<Name, RkXmlBasicType<RkReal>> RealMap;

NameVector names(std::initializer_list<const char*> values) {
  NameVector vector;
  for (const char* value : values) vector.pushBack(Name(value));
  return vector;
}

}  // namespace

TEST(RkXmlVectorType, erase_and_rotate_refuse_bad_ranges_with_exact_lines) {
  Rk::Print::Capture capture;
  NameVector vector = names({"a", "b", "c"});
  EXPECT_FALSE(vector.erase(3));
  EXPECT_TRUE(vector.erase(2, 2));
  EXPECT_FALSE(vector.erase(3, 2));
  EXPECT_FALSE(vector.erase(0, 4));
  EXPECT_EQ(vector, names({"a", "b", "c"}));
  ASSERT_EQ(capture.lines().size(), 3u);
  EXPECT_EQ(capture.lines()[0].text,
            "RkXmlVectorType<ElementType>::erase(): index (3) exceeds vector size (3).\n");
  EXPECT_EQ(capture.lines()[1].text, "first (3) is bigger than last (2).\n");
  EXPECT_EQ(capture.lines()[2].text, "index (4) exceeds vector size ( 3).\n");
  for (const auto& line : capture.lines()) EXPECT_EQ(line.level, 4);

  EXPECT_FALSE(vector.leftRotate(3));
  EXPECT_TRUE(vector.leftRotate(1));
  EXPECT_EQ(vector, names({"b", "c", "a"}));
  EXPECT_TRUE(vector.erase(1));
  EXPECT_EQ(vector, names({"b", "a"}));
  vector.resizeToAtLeast(1);
  EXPECT_EQ(vector.size(), 2u);
  vector.resize(1);
  EXPECT_EQ(vector, names({"b"}));
  EXPECT_TRUE(vector.erase(0, vector.size()));
  EXPECT_EQ(vector.size(), 0u);
  EXPECT_NE(names({"a"}), names({"a", "a"}));
}

TEST(RkXmlVectorType, read_keeps_elements_when_count_disagrees_and_reports_at_level_3) {
  Rk::Print::Capture capture;
  RkXmlVectorType<RkSampleShapeContainer> shapes;
  const char* document = "<vector xmlns=\"" NS
                         "\" count=\"2\">\n"
                         "  <element><sampleCircle><radius>2</radius></sampleCircle></element>\n"
                         "  <element><sampleCircle/></element>\n"
                         "  <element><sampleSquare><side>3</side></sampleSquare></element>\n"
                         "</vector>\n";
  EXPECT_TRUE(RkXmlReader::readString(document, shapes, "shapes.xml"));
  ASSERT_EQ(shapes.size(), 3u);
  EXPECT_TRUE(shapes[2].element()->equality(std::make_unique<RkSampleSquare>(3.0).get()));
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].level, 3);
  EXPECT_EQ(capture.lines()[0].text,
            "RkXmlVectorType Error: array size not equal to attribute value -- 2, actual -- 3\n");
  EXPECT_EQ(capture.lines()[1].level, 3);
  EXPECT_EQ(capture.lines()[1].text, "Filename: shapes.xml, Line count: 1\n");

  // A group without data is skipped with one level-4 line; a missing count counts as 0.
  capture.clear();
  NameVector vector;
  EXPECT_TRUE(
      RkXmlReader::readString("<vector xmlns=\"" NS "\"><group/><group>x \"y z\"</group></vector>", vector));
  EXPECT_EQ(vector, names({"x", "y z"}));
  ASSERT_EQ(capture.lines().size(), 3u);
  EXPECT_EQ(capture.lines()[0].text, "RkXmlVectorType Error: XML parser should be in data mode\n");
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[1].text,
            "RkXmlVectorType Error: array size not equal to attribute value -- 0, actual -- 2\n");
}

TEST(RkXmlVectorType, streamed_write_reads_back_and_counts_at_header_time) {
  const NameVector vector = names({"pick", "place"});
  std::ostringstream stream;
  RkXmlWriter* writer = nullptr;
  ASSERT_TRUE(vector.writeHeaderToStream(stream, writer, "names.xml", NameVector::classToken()));
  EXPECT_TRUE(vector.writeBodyToStream(writer));
  EXPECT_TRUE(vector.appendElementToStream(writer, Name("home")));
  EXPECT_TRUE(vector.writeFooterToStream(writer));
  EXPECT_EQ(writer, nullptr);
  EXPECT_FALSE(vector.writeBodyToStream(nullptr));
  EXPECT_FALSE(vector.writeFooterToStream(writer));

  Rk::Print::Capture capture;
  NameVector read;
  EXPECT_TRUE(RkXmlReader::readString(stream.str(), read));
  EXPECT_EQ(read, names({"pick", "place", "home"}));
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].text,
            "RkXmlVectorType Error: array size not equal to attribute value -- 2, actual -- 3\n");

  std::ostringstream failed;
  failed.setstate(std::ios::failbit);
  EXPECT_FALSE(vector.writeHeaderToStream(failed, writer, "x", NameVector::classToken()));
  EXPECT_EQ(writer, nullptr);
}

TEST(RkXmlMapType, operations_follow_key_order) {
  RealMap map;
  map.add(Name("b"), 2.0);
  map.add(Name("a"), 1.0);
  map.add(Name("c"), 3.0);
  map.add(Name("b"), 20.0);
  EXPECT_EQ(map.size(), 3u);
  RkU32 index = 99;
  EXPECT_TRUE(map.keyIndex(Name("c"), index));
  EXPECT_EQ(index, 2u);
  EXPECT_FALSE(map.keyIndex(Name("zz"), index));
  EXPECT_EQ(index, 3u);
  Name key;
  EXPECT_TRUE(map.indexKey(1, key));
  EXPECT_EQ(key.value(), "b");
  EXPECT_FALSE(map.indexKey(3, key));
  RkXmlBasicType<RkReal> value(-1.0);
  EXPECT_TRUE(map.lookup(Name("b"), value));
  EXPECT_EQ(value.value(), 20.0);
  EXPECT_FALSE(map.lookup(Name("x"), value));
  EXPECT_EQ(value.value(), 20.0);
  EXPECT_EQ(map.lookupPointer(Name("x")), nullptr);
  EXPECT_FALSE(map.erase(Name("x")));
  EXPECT_TRUE(map.erase(Name("a")));
  EXPECT_TRUE(roundTrips(map));
}

TEST(RkXmlMapType, read_is_lenient_on_values_and_strict_on_structure) {
  Rk::Print::Capture capture;
  RealMap map;
  const char* document = "<map xmlns=\"" NS
                         "\">"
                         "<element><key>a</key><value>1</value></element>"
                         "<element><key>b</key><value/></element>"
                         "<element><key>a</key><value>5</value></element>"
                         "</map>";
  EXPECT_TRUE(RkXmlReader::readString(document, map));
  RealMap expected(Name("a"), 5.0);
  expected.add(Name("b"), 0.0);
  EXPECT_EQ(map, expected);
  EXPECT_TRUE(capture.lines().empty());

  // A first child other than "element": both lines, the map left empty, the read failed.
  EXPECT_FALSE(
      RkXmlReader::readString("<map xmlns=\"" NS "\">\n<entry><key>a</key></entry></map>", map, "m.xml"));
  EXPECT_EQ(map.size(), 0u);
  ASSERT_GE(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text,
            "RkXmlMapType Error: file not valid.\n\tKey map format not correct.\n\tFile: m.xml\n\tLine: 2");
  EXPECT_EQ(capture.lines()[1].level, 4);
  EXPECT_EQ(capture.lines()[1].text, "\tExpected " NS "element but received " NS "entry.");

  // An empty key element is refused; entries read before it stay.
  capture.clear();
  EXPECT_FALSE(RkXmlReader::readString(
      "<map xmlns=\"" NS "\"><element><key>a</key><value>1</value></element><element><key/></element></map>",
      map));
  EXPECT_EQ(map.size(), 1u);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].text.rfind("RkXmlMapType Error: file not valid.", 0), 0u);
}

TEST(RkXmlVariableElementType, copies_clone_and_compare_by_concrete_class) {
  RkSampleShapeContainer empty, circle, square;
  EXPECT_EQ(empty, RkSampleShapeContainer::nullObject());
  RkSampleCircle shape(2.0);
  circle.setElement(shape);
  shape.setRadius(5.0);
  EXPECT_TRUE(circle.element()->equality(std::make_unique<RkSampleCircle>(2.0).get()));
  EXPECT_EQ(circle.element()->container(), &circle);
  square.setElement(RkSampleSquare(2.0));
  EXPECT_NE(empty, circle);
  EXPECT_NE(circle, square);

  RkSampleShapeContainer copy(circle);
  EXPECT_EQ(copy, circle);
  EXPECT_NE(copy.element(), circle.element());
  EXPECT_EQ(copy.element()->container(), &copy);
  copy = copy;
  EXPECT_EQ(copy, circle);
  copy = empty;
  EXPECT_EQ(copy.element(), nullptr);
  EXPECT_TRUE(roundTrips(circle));
  EXPECT_TRUE(roundTrips(empty));
}

namespace {
inline const RkToken RkRoomyShapeContainerToken = RkXml::qualifiedToken("roomyShapeContainer");

// Room for a circle (one number beside its base), not for a square (which also holds a string).
class RkRoomyShapeContainer
    : public RkXmlFamilyContainer<RkRoomyShapeContainer, RkSampleShape, RkRoomyShapeContainerToken,
                                  sizeof(RkSampleCircle)> {
 protected:
  void registerComponentCreators() override {
    registerComponentCreator(RkSampleCircle::classToken(), &RkSampleCircle::creator);
    registerComponentCreator(RkSampleSquare::classToken(), &RkSampleSquare::creator);
  }
};

const RkSampleShape* heldAt(const RkRoomyShapeContainer& container) {
  const RkSampleShape* element = container.element();
  EXPECT_TRUE(!element || element->container() == &container);
  return element;
}
}  // namespace

TEST(RkXmlVariableElementType, elements_held_in_place_copy_move_and_read_as_their_own_class) {
  const RkSampleCircle two(2.0), five(5.0);
  RkRoomyShapeContainer circle;
  circle.setNewElement<RkSampleCircle>().setRadius(2.0);
  const char* where = reinterpret_cast<const char*>(heldAt(circle));
  const char* self = reinterpret_cast<const char*>(&circle);
  EXPECT_TRUE(where >= self && where < self + sizeof(circle)) << "the circle should stand in the container";
  RkRoomyShapeContainer square;
  square.setNewElement<RkSampleSquare>();
  where = reinterpret_cast<const char*>(heldAt(square));
  self = reinterpret_cast<const char*>(&square);
  EXPECT_FALSE(where >= self && where < self + sizeof(square)) << "a square does not fit";

  RkRoomyShapeContainer copy(circle);
  EXPECT_TRUE(heldAt(copy)->equality(&two));
  EXPECT_NE(copy.element(), circle.element());
  dynamic_cast<RkSampleCircle&>(*copy.element()).setRadius(5.0);
  EXPECT_TRUE(heldAt(circle)->equality(&two));
  copy = copy;
  EXPECT_TRUE(heldAt(copy)->equality(&five));
  copy = square;
  EXPECT_TRUE(heldAt(copy)->equality(std::make_unique<RkSampleSquare>().get()));
  copy = circle;
  EXPECT_EQ(copy, circle);

  RkRoomyShapeContainer moved(std::move(copy));
  EXPECT_EQ(copy.element(), nullptr);
  EXPECT_TRUE(heldAt(moved)->equality(&two));
  square = std::move(moved);
  EXPECT_EQ(moved.element(), nullptr);
  EXPECT_TRUE(heldAt(square)->equality(&two));

  // A growing list moves its containers; each element follows its own.
  std::vector<RkRoomyShapeContainer> shapes;
  for (int i = 0; i < 20; ++i) {
    shapes.emplace_back();
    if (i % 3) {
      shapes.back().setNewElement<RkSampleCircle>().setRadius(i);
    } else {
      shapes.back().setElement(RkSampleSquare(i));
    }
  }
  for (int i = 0; i < 20; ++i) {
    const RkSampleShape* shape = heldAt(shapes[i]);
    if (i % 3) {
      EXPECT_TRUE(shape->equality(std::make_unique<RkSampleCircle>(i).get())) << i;
    } else {
      EXPECT_TRUE(shape->equality(std::make_unique<RkSampleSquare>(i).get())) << i;
    }
  }

  // Reading replaces an element held in place.
  EXPECT_TRUE(RkXmlReader::readString("<roomyShapeContainer xmlns=\"" NS
                                      "\"><sampleSquare><side>4</side></sampleSquare></roomyShapeContainer>",
                                      shapes[1]));
  EXPECT_TRUE(heldAt(shapes[1])->equality(std::make_unique<RkSampleSquare>(4.0).get()));
  EXPECT_TRUE(roundTrips(shapes[2]));
}

TEST(RkXmlVariableElementType, read_takes_the_last_child_and_empties_on_unknown_tags) {
  Rk::Print::Capture capture;
  RkSampleShapeContainer container;
  container.setElement(RkSampleCircle(9.0));
  EXPECT_TRUE(RkXmlReader::readString("<sampleShapeContainer xmlns=\"" NS "\"><sampleCircle/>"
                                      "<sampleSquare><side>4</side></sampleSquare></sampleShapeContainer>",
                                      container));
  EXPECT_TRUE(container.element()->equality(std::make_unique<RkSampleSquare>(4.0).get()));
  EXPECT_TRUE(capture.lines().empty());

  EXPECT_FALSE(RkXmlReader::readString("<sampleShapeContainer xmlns=\"" NS
                                       "\"><triangle><side>1</side></triangle></sampleShapeContainer>",
                                       container));
  EXPECT_EQ(container.element(), nullptr);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text, "RkXmlVariableElementType::readValueFromToken() error:\n\t\"" NS
                                     "triangle\" tag not registered.\n");

  // A library list never changes the element; with no plug-in path nothing is loaded and one line says why.
  capture.clear();
  unsetenv("RK_PLUGIN_PATH");
  EXPECT_TRUE(RkXmlReader::readString("<sampleShapeContainer xmlns=\"" NS "\"><sampleCircle/>"
                                      "<addLibraries count=\"1\"><group>libNothing.so</group></addLibraries>"
                                      "</sampleShapeContainer>",
                                      container));
  EXPECT_TRUE(container.element()->equality(std::make_unique<RkSampleCircle>().get()));
  EXPECT_EQ(container.addLibraries().size(), 1u);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_NE(capture.lines()[0].text.find("RK_PLUGIN_PATH is not set"), std::string::npos);
  EXPECT_TRUE(roundTrips(container));
}

namespace {
RkXmlObject* squareFactory(const RkToken& tag) {
  return tag == RkXml::qualifiedToken("fallbackSquare") ? new RkSampleSquare(7.0) : nullptr;
}
}  // namespace

TEST(RkXmlVariableElementType, reader_fallback_factory_is_asked_after_the_creators) {
  RkSampleShapeContainer container;
  EXPECT_TRUE(RkXmlReader::readString("<sampleShapeContainer xmlns=\"" NS
                                      "\"><fallbackSquare/></sampleShapeContainer>",
                                      container, "(string)", &squareFactory));
  ASSERT_NE(container.element(), nullptr);
  EXPECT_TRUE(container.element()->equality(std::make_unique<RkSampleSquare>(7.0).get()));
  EXPECT_TRUE(RkXmlReader::readString("<sampleShapeContainer xmlns=\"" NS
                                      "\"><sampleCircle/></sampleShapeContainer>",
                                      container, "(string)", &squareFactory));
  EXPECT_TRUE(container.element()->equality(std::make_unique<RkSampleCircle>().get()));
}
