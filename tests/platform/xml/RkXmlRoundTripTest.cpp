// Round trips of awkward values and deeply nested containers, and the schema written for them.
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlschemas.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "common/RkCoordinateSystemTransformation.h"
#include "common/RkDataMap.h"
#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlSampleShapes.h"
#include "support/RkRoundTrip.h"
#include "xml/RkXmlEnumType.h"
#include "xml/RkXmlMapType.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlVectorType.h"
#include "xml/RkXmlWriter.h"

namespace {

typedef RkXmlBasicType<std::string> Name;
typedef RkXmlVectorType<RkSampleShapeContainer> ShapeVector;
typedef RkXmlMapType<Name, ShapeVector> ShapeMap;
typedef RkXmlVectorType<ShapeMap> ShapeMapVector;

const std::vector<std::string> kAwkwardStrings = {
    "plain",      "two words",
    " leading",   "trailing ",
    "say \"hi\"", "back\\slash",
    "a & b",      "x < y > z",
    "",           "\xC3\xA9t\xC3\xA9 \xE2\x9C\x93",
    "tab\there",  "line\nbreak\r\n",
    "\x01\x7F",   "\xFF\xFE invalid",
    "\"",         "\\",
};

// A holder exercising every kind of field: basic values, an enumeration, a transformation, a vector of
// maps of vectors of polymorphic containers, a data map and an attribute.
const RkToken RkSampleHolderToken = RkXml::qualifiedToken("sampleHolder");

class RkSampleHolder : public RkXmlConcreteClass<RkSampleHolder, RkXmlCompoundType, RkSampleHolderToken> {
 public:
  RkSampleHolder() : m_mode(0, {{0, RkToken("primaryFrame")}, {1, RkToken("dhFrame")}}) {}

  RkXmlBasicType<std::string> m_label;
  RkXmlEnumType<RkU32> m_mode;
  RkXmlBasicType<RkU32> m_count;
  RkXmlBasicType<RkBoolean> m_flag;
  RkCoordinateSystemTransformation m_placement;
  ShapeMapVector m_nested;
  RkXmlVectorType<Name> m_names;
  RkXmlVectorType<RkXmlBasicType<RkReal>> m_reals;
  RkDataMap m_data;

 protected:
  void registerComponents() override {
    registerAttributeComponent(RkXml::qualifiedToken("label"), &m_label);
    registerComponent(RkXml::qualifiedToken("mode"), &m_mode);
    registerComponent(RkXml::qualifiedToken("count"), &m_count);
    registerComponent(RkXml::qualifiedToken("flag"), &m_flag);
    registerComponent(RkXml::qualifiedToken("placement"), &m_placement);
    registerComponent(RkXml::qualifiedToken("nested"), &m_nested);
    registerComponent(RkXml::qualifiedToken("names"), &m_names);
    registerComponent(RkXml::qualifiedToken("reals"), &m_reals);
    registerComponent(RkXml::qualifiedToken("data"), &m_data);
  }
};

RkSampleHolder fullHolder() {
  RkSampleHolder holder;
  holder.m_label = "a \"quoted\" label & more";
  holder.m_mode.setValue(1);
  holder.m_count = 4000000000u;
  holder.m_flag = true;
  holder.m_placement = RkCoordinateSystemTransformation(RkVector(0.1, -0.0, 1e-300),
                                                        RkOrientation::fromAngleAxis(0.3, RkVector(1, 2, 3)));
  for (int outer = 0; outer < 3; ++outer) {
    ShapeMap map;
    for (int inner = 0; inner < 2; ++inner) {
      ShapeVector shapes;
      RkSampleShapeContainer circle, square, empty;
      circle.setElement(RkSampleCircle(0.1 * (outer + 1)));
      square.setElement(
          RkSampleSquare(inner + 0.5, kAwkwardStrings[(outer + inner) % kAwkwardStrings.size()]));
      shapes.pushBack(circle);
      shapes.pushBack(empty);
      shapes.pushBack(square);
      map.add(Name(kAwkwardStrings[outer * 2 + inner]), shapes);
    }
    holder.m_nested.pushBack(map);
  }
  for (const std::string& text : kAwkwardStrings) holder.m_names.pushBack(Name(text));
  for (RkReal value :
       {0.1, 1e-300, -0.0, std::numeric_limits<RkReal>::quiet_NaN(), std::numeric_limits<RkReal>::infinity(),
        -std::numeric_limits<RkReal>::infinity(), std::numeric_limits<RkReal>::denorm_min(), 123456789.125}) {
    holder.m_reals.pushBack(value);
  }
  holder.m_data.setValue("height", 0.25);
  holder.m_data.setValue("two words", -1.5);
  return holder;
}

}  // namespace

TEST(RkXmlRoundTrip, nested_containers_and_awkward_values_read_back_equal_and_rewrite_identically) {
  Rk::Print::Capture capture;
  const RkSampleHolder holder = fullHolder();
  EXPECT_TRUE(roundTrips(holder));
  EXPECT_TRUE(roundTrips(RkSampleHolder()));
  EXPECT_TRUE(capture.lines().empty()) << capture.text();

  std::string document;
  RkXmlWriter::writeString(holder, document);
  RkSampleHolder read;
  ASSERT_TRUE(RkXmlReader::readString(document, read));
  EXPECT_TRUE(std::signbit(read.m_reals[2].value()));
  EXPECT_TRUE(std::isnan(read.m_reals[3].value()));
  EXPECT_EQ(read.m_reals[4].value(), std::numeric_limits<RkReal>::infinity());
  EXPECT_EQ(read.m_reals[6].value(), std::numeric_limits<RkReal>::denorm_min());
}

TEST(RkXmlRoundTrip, every_awkward_string_survives_as_a_single_value_and_as_a_group_item) {
  for (const std::string& text : kAwkwardStrings) {
    EXPECT_TRUE(roundTrips(Name(text))) << text;
    RkXmlVectorType<Name> group;
    group.pushBack(Name(text));
    group.pushBack(Name("after"));
    EXPECT_TRUE(roundTrips(group)) << text;
  }
}

TEST(RkXmlRoundTrip, basic_values_accept_alternative_spellings_and_refuse_garbage_with_one_line) {
  Rk::Print::Capture capture;
  RkXmlBasicType<RkBoolean> flag;
  RkXmlBasicType<RkReal> real;
  EXPECT_TRUE(RkXmlReader::readString(
      "<boolean xmlns=\"http://rkmanipulation.org/namespace/ct#\"> 1 </boolean>", flag));
  EXPECT_TRUE(flag.value());
  EXPECT_TRUE(
      RkXmlReader::readString("<real xmlns=\"http://rkmanipulation.org/namespace/ct#\">+2.5e3</real>", real));
  EXPECT_EQ(real.value(), 2500.0);
  EXPECT_TRUE(capture.lines().empty());
  EXPECT_FALSE(RkXmlReader::readString(
      "<real xmlns=\"http://rkmanipulation.org/namespace/ct#\">\n2.5 m</real>", real, "value.xml"));
  EXPECT_EQ(real.value(), 2500.0);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].text,
            "RkXmlReader::read error: value.xml:1: \"\\n2.5 m\" is not a real number\n");
}

TEST(RkXmlSchema, documents_written_for_a_sample_object_validate_against_its_schema) {
  const std::string xsd = RkXmlSchema::writeString(RkSampleHolder());
  xmlSchemaParserCtxtPtr parser = xmlSchemaNewMemParserCtxt(xsd.data(), static_cast<int>(xsd.size()));
  xmlSchemaPtr schema = xmlSchemaParse(parser);
  ASSERT_NE(schema, nullptr) << xsd;
  xmlSchemaValidCtxtPtr validator = xmlSchemaNewValidCtxt(schema);
  for (const RkSampleHolder& holder : {fullHolder(), RkSampleHolder()}) {
    std::string document;
    RkXmlWriter::writeString(holder, document);
    xmlDocPtr parsed = xmlReadMemory(document.data(), static_cast<int>(document.size()), "holder.xml",
                                     nullptr, XML_PARSE_NONET);
    ASSERT_NE(parsed, nullptr);
    EXPECT_EQ(xmlSchemaValidateDoc(validator, parsed), 0) << document << "\n" << xsd;
    xmlFreeDoc(parsed);
  }
  // The schema refuses what the reader would report: an unknown element in a compound.
  const char* wrong =
      "<sampleHolder xmlns=\"http://rkmanipulation.org/namespace/ct#\"><colour/></sampleHolder>";
  xmlDocPtr parsed =
      xmlReadMemory(wrong, static_cast<int>(strlen(wrong)), "wrong.xml", nullptr, XML_PARSE_NONET);
  xmlSetStructuredErrorFunc(nullptr, [](void*, xmlErrorPtr) {});
  EXPECT_NE(xmlSchemaValidateDoc(validator, parsed), 0);
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  xmlFreeDoc(parsed);
  xmlSchemaFreeValidCtxt(validator);
  xmlSchemaFree(schema);
  xmlSchemaFreeParserCtxt(parser);
}

namespace {
// The values of the attributes called name of every element called element below node, in document order.
void attributesBelow(xmlNodePtr node, const char* element, const char* name,
                     std::vector<std::string>& values) {
  for (; node; node = node->next) {
    if (node->type != XML_ELEMENT_NODE) continue;
    if (xmlStrEqual(node->name, BAD_CAST element)) {
      xmlChar* value = xmlGetProp(node, BAD_CAST name);
      values.push_back(value ? reinterpret_cast<const char*>(value) : "");
      xmlFree(value);
    }
    attributesBelow(node->children, element, name, values);
  }
}
}  // namespace

TEST(RkXmlWriter, text_attributes_and_schema_values_escape_alike_and_parse_back_unchanged) {
  const std::string awkward = "a&b<c>d\"e'f\tg\nh\ri]]>j";
  std::string data, attribute;
  RkXmlWriter::appendEscaped(data, awkward, false);
  RkXmlWriter::appendEscaped(attribute, awkward, true);
  const std::string document = "<r a=\"" + attribute + "\">" + data + "</r>";
  xmlDocPtr parsed = xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr, 0);
  ASSERT_NE(parsed, nullptr) << document;
  xmlChar* text = xmlNodeGetContent(xmlDocGetRootElement(parsed));
  EXPECT_EQ(reinterpret_cast<const char*>(text), awkward);
  xmlFree(text);
  std::vector<std::string> values;
  attributesBelow(parsed->children, "r", "a", values);
  EXPECT_EQ(values, std::vector<std::string>{awkward});
  xmlFreeDoc(parsed);

  // The schema quotes an enumeration's names with the same escaping.
  const RkXmlEnumType<int> setting(0, {{0, RkToken(awkward)}});
  const std::string xsd = RkXmlSchema::writeString(setting);
  parsed = xmlReadMemory(xsd.data(), static_cast<int>(xsd.size()), nullptr, nullptr, 0);
  ASSERT_NE(parsed, nullptr) << xsd;
  values.clear();
  attributesBelow(parsed->children, "enumeration", "value", values);
  EXPECT_NE(std::find(values.begin(), values.end(), awkward), values.end()) << xsd;
  xmlFreeDoc(parsed);
}
