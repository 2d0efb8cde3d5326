// The XSD that `rkmanip schema` prints documents every element and attribute in a line, with the unit of
// every field that has one, and stays a schema that validates the examples.
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlschemas.h>

#include <cstdio>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace {

std::string schemaText() {
  std::string text;
  FILE* pipe = popen("'" RKMANIP "' schema", "r");
  char buffer[4096];
  for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) text.append(buffer, n);
  pclose(pipe);
  return text;
}

bool isSchema(const xmlNode* node, const char* name) {
  return node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, BAD_CAST name) == 0;
}

std::string attribute(const xmlNode* node, const char* name) {
  xmlChar* value = xmlGetProp(node, BAD_CAST name);
  std::string text = value ? reinterpret_cast<const char*>(value) : "";
  xmlFree(value);
  return text;
}

// The text of node's xs:annotation/xs:documentation, or empty.
std::string documentation(const xmlNode* node) {
  for (const xmlNode* child = node->children; child; child = child->next) {
    if (!isSchema(child, "annotation")) continue;
    for (const xmlNode* item = child->children; item; item = item->next) {
      if (!isSchema(item, "documentation")) continue;
      xmlChar* content = xmlNodeGetContent(item);
      std::string text = content ? reinterpret_cast<const char*>(content) : "";
      xmlFree(content);
      return text;
    }
  }
  return "";
}

struct Declaration {
  std::string kind;  // element, attribute or complexType
  std::string name;
  std::string text;
};

void collect(const xmlNode* node, std::vector<Declaration>& out) {
  for (; node; node = node->next) {
    if (isSchema(node, "element") || isSchema(node, "attribute") ||
        (isSchema(node, "complexType") && !attribute(node, "name").empty())) {
      out.push_back(
          {reinterpret_cast<const char*>(node->name), attribute(node, "name"), documentation(node)});
    }
    collect(node->children, out);
  }
}

}  // namespace

TEST(RkSchemaDocumentation, every_element_says_what_it_is_with_its_unit_and_the_schema_still_validates) {
  const std::string xsd = schemaText();
  xmlDocPtr document = xmlReadMemory(xsd.data(), static_cast<int>(xsd.size()), "schema.xsd", nullptr, 0);
  ASSERT_NE(document, nullptr);
  std::vector<Declaration> declarations;
  collect(xmlDocGetRootElement(document), declarations);
  xmlFreeDoc(document);
  ASSERT_GT(declarations.size(), 300u);

  // Fields with a unit say it: times and durations in seconds, lengths in metres, orientations as w x y z.
  const std::regex seconds("(, |\\()s\\b|, s;");
  const std::regex metres("\\bm\\b");
  const std::map<std::string, std::regex> units = {{"timeDuration", seconds},
                                                   {"interpolationTime", seconds},
                                                   {"triggerTime", seconds},
                                                   {"initializationTime", seconds},
                                                   {"placementTolerance", metres},
                                                   {"zoneRadius", metres},
                                                   {"extendedZoneRadius", metres},
                                                   {"translation", metres},
                                                   {"orientation", std::regex("w x y z")},
                                                   {"relativeOffset", metres},
                                                   {"homeJointPositions", std::regex("\\brad\\b")},
                                                   {"jointPositions", std::regex("\\brad\\b")}};
  std::map<std::string, int> unitsSeen;
  for (const Declaration& declaration : declarations) {
    SCOPED_TRACE(declaration.kind + " " + declaration.name);
    EXPECT_FALSE(declaration.text.empty());
    EXPECT_EQ(declaration.text.find('\n'), std::string::npos);
    const auto unit = units.find(declaration.name);
    if (declaration.kind != "complexType" && unit != units.end()) {
      EXPECT_TRUE(std::regex_search(declaration.text, unit->second)) << declaration.text;
      ++unitsSeen[declaration.name];
    }
  }
  EXPECT_EQ(unitsSeen.size(), units.size());

  // A class's line is the first sentence of its header's comment, for the class's element and its type.
  int frames = 0;
  for (const Declaration& declaration : declarations) {
    if (declaration.name == "standardManipulationFrame" ||
        declaration.name == "RkStandardManipulationFrame") {
      EXPECT_EQ(declaration.text,
                "The ordinary step of a sequence: one offset per end effector and one transition event that "
                "ends it");
      ++frames;
    }
  }
  EXPECT_GE(frames, 2);

  // The annotations leave a schema that libxml2 accepts and that validates an example task.
  xmlSchemaParserCtxtPtr parser = xmlSchemaNewMemParserCtxt(xsd.data(), static_cast<int>(xsd.size()));
  xmlSchemaPtr schema = xmlSchemaParse(parser);
  ASSERT_NE(schema, nullptr);
  xmlSchemaValidCtxtPtr validator = xmlSchemaNewValidCtxt(schema);
  EXPECT_EQ(xmlSchemaValidateFile(validator, RK_SOURCE_DIR "/examples/tasks/pick_and_place.xml", 0), 0);
  xmlSchemaFreeValidCtxt(validator);
  xmlSchemaFree(schema);
  xmlSchemaFreeParserCtxt(parser);
}
