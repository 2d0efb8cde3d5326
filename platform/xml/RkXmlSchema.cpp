#include "xml/RkXmlSchema.h"

#include <cxxabi.h>

#include <cstdlib>
#include <typeinfo>

#include "xml/RkXmlObject.h"
#include "xml/RkXmlTokens.h"
#include "xml/RkXmlWriter.h"

struct RkXmlSchema::Node {
  std::string name;  // empty for a choice
  RkXmlOccurrence occurrence = RkXmlOccurrence::Once;
  bool choice = false;
  std::string typeName;  // a named complex type or a simple type
  std::string documentation;
  std::string className;  // of a root that is not a named type
  std::unique_ptr<Content> content;
  std::vector<std::unique_ptr<Node>> alternatives;
};

struct RkXmlSchema::Content {
  bool all = false;
  std::string simpleType;
  std::vector<std::string> enumeration;
  bool hasEnumeration = false;
  std::vector<std::unique_ptr<Node>> particles;
  struct Attribute {
    std::string name;
    std::string type;
    std::string documentation;
  };
  std::vector<Attribute> attributes;
};

// Where declarations go: an open element (its content made on demand), a named type, or a choice.
struct RkXmlSchema::Context {
  Node* element;
  Content* content;
  Node* choice;
};

namespace {

std::string qualified(const std::string& type) {
  return type.compare(0, 3, "xs:") == 0 ? type : "rk:" + type;
}

void indent(std::string& out, int depth) {
  out.append(2 * depth, ' ');
}

const char* occurrenceText(RkXmlOccurrence occurrence) {
  switch (occurrence) {
    case RkXmlOccurrence::Optional:
      return " minOccurs=\"0\"";
    case RkXmlOccurrence::Many:
      return " minOccurs=\"0\" maxOccurs=\"unbounded\"";
    default:
      return "";
  }
}

}  // namespace

RkXmlSchema::RkXmlSchema() : m_roots(new Content) {
  m_contexts.push_back({nullptr, m_roots.get(), nullptr});
}

RkXmlSchema::~RkXmlSchema() = default;

RkXmlSchema::Content& RkXmlSchema::currentContent() {
  Context& context = m_contexts.back();
  if (!context.content) {
    context.element->content.reset(new Content);
    context.content = context.element->content.get();
  }
  return *context.content;
}

RkXmlSchema::Node& RkXmlSchema::addParticle(const std::string& name, RkXmlOccurrence occurrence,
                                            bool choice) {
  std::unique_ptr<Node> node(new Node);
  node->name = name;
  node->occurrence = occurrence;
  node->choice = choice;
  Node* made = node.get();
  Context& context = m_contexts.back();
  if (context.choice) {
    context.choice->alternatives.push_back(std::move(node));
  } else {
    currentContent().particles.push_back(std::move(node));
  }
  return *made;
}

void RkXmlSchema::setClassDescriptions(std::map<std::string, std::string> descriptions) {
  m_classDescriptions = std::move(descriptions);
}

std::string RkXmlSchema::className(const RkXmlObject& object) {
  const char* mangled = typeid(object).name();
  int status = 0;
  char* demangled = abi::__cxa_demangle(mangled, nullptr, nullptr, &status);
  std::string name = status == 0 && demangled ? demangled : mangled;
  std::free(demangled);
  for (char& c : name) {
    const bool word = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    if (!word) c = '_';
  }
  return name;
}

void RkXmlSchema::openElement(const RkToken& tag, RkXmlOccurrence occurrence, const char* description) {
  Node& node = addParticle(std::string(tag.localName()), occurrence, false);
  if (description) node.documentation = description;
  m_contexts.push_back({&node, nullptr, nullptr});
}

void RkXmlSchema::closeElement() {
  if (m_contexts.size() > 1) m_contexts.pop_back();
}

void RkXmlSchema::textContent(const std::string& simpleType) {
  Context& context = m_contexts.back();
  if (context.element && !context.content && context.element->typeName.empty()) {
    context.element->typeName = simpleType;
  } else {
    currentContent().simpleType = simpleType;
  }
}

void RkXmlSchema::textEnumeration(const std::vector<std::string>& values) {
  Content& content = currentContent();
  content.hasEnumeration = true;
  content.enumeration = values;
}

void RkXmlSchema::attribute(const RkToken& name, const std::string& simpleType, const char* description) {
  currentContent().attributes.push_back(
      {std::string(name.localName()), simpleType, description ? description : ""});
}

void RkXmlSchema::useAllGroup() {
  currentContent().all = true;
}

void RkXmlSchema::openChoice(RkXmlOccurrence occurrence) {
  Node& node = addParticle(std::string(), occurrence, true);
  m_contexts.push_back({nullptr, nullptr, &node});
}

void RkXmlSchema::closeChoice() {
  closeElement();
}

bool RkXmlSchema::beginNamedType(const std::string& name) {
  Context& context = m_contexts.back();
  if (context.element) context.element->typeName = name;
  if (!m_typeNames.insert(name).second) return false;
  m_namedTypes.emplace_back(name, std::unique_ptr<Content>(new Content));
  m_contexts.push_back({nullptr, m_namedTypes.back().second.get(), nullptr});
  return true;
}

void RkXmlSchema::endNamedType() {
  closeElement();
}

void RkXmlSchema::addEveryClassAsRoot() {
  // Adding a root may meet classes not seen before, which then follow in the list.
  for (std::size_t i = 0; i < m_classes.size(); ++i) addRoot(*m_classes[i]);
}

void RkXmlSchema::noteClass(const RkXmlObject& object) {
  if (m_classNames.insert(typeid(object).name()).second) m_classes.emplace_back(object.newObject());
}

void RkXmlSchema::addRoot(const RkXmlObject& object) {
  if (!m_rootTags.insert(object.token()).second) return;
  m_contexts.resize(1);
  openElement(object.token(), RkXmlOccurrence::Once);
  m_contexts.back().element->className = className(object);
  object.writeSchema(*this);
  closeElement();
}

namespace {

typedef std::map<std::string, std::string> Descriptions;

// The text of a class's description, or empty.
std::string describe(const Descriptions& descriptions, const std::string& className) {
  const auto found = descriptions.find(className);
  return found == descriptions.end() ? std::string() : found->second;
}

void printAnnotation(std::string& out, const std::string& documentation, int depth) {
  if (documentation.empty()) return;
  indent(out, depth);
  out += "<xs:annotation><xs:documentation>";
  RkXmlWriter::appendEscaped(out, documentation, false);
  out += "</xs:documentation></xs:annotation>\n";
}

template <class Node, class Content>
void printContent(std::string& out, const Content& content, int depth, const Descriptions& descriptions);

template <class Node, class Content>
void printElement(std::string& out, const Node& node, int depth, const Descriptions& descriptions) {
  indent(out, depth);
  if (node.choice) {
    out += "<xs:choice";
    out += occurrenceText(node.occurrence);
    out += ">\n";
    for (const auto& alternative : node.alternatives)
      printElement<Node, Content>(out, *alternative, depth + 1, descriptions);
    indent(out, depth);
    out += "</xs:choice>\n";
    return;
  }
  out += "<xs:element name=\"";
  RkXmlWriter::appendEscaped(out, node.name, true);
  out += '"';
  out += occurrenceText(node.occurrence);
  // An element's own description first, else that of its class.
  std::string documentation = node.documentation;
  if (documentation.empty()) documentation = describe(descriptions, node.className);
  if (documentation.empty()) documentation = describe(descriptions, node.typeName);
  if (!node.typeName.empty()) {
    out += " type=\"" + qualified(node.typeName) + "\"";
    if (documentation.empty()) {
      out += "/>\n";
      return;
    }
    out += ">\n";
    printAnnotation(out, documentation, depth + 1);
    indent(out, depth);
    out += "</xs:element>\n";
    return;
  }
  out += ">\n";
  printAnnotation(out, documentation, depth + 1);
  if (node.content && node.content->hasEnumeration && node.content->attributes.empty()) {
    indent(out, depth + 1);
    out += "<xs:simpleType>\n";
    indent(out, depth + 2);
    out += "<xs:restriction base=\"xs:string\">\n";
    for (const std::string& value : node.content->enumeration) {
      indent(out, depth + 3);
      out += "<xs:enumeration value=\"";
      RkXmlWriter::appendEscaped(out, value, true);
      out += "\"/>\n";
    }
    indent(out, depth + 2);
    out += "</xs:restriction>\n";
    indent(out, depth + 1);
    out += "</xs:simpleType>\n";
  } else {
    indent(out, depth + 1);
    out += "<xs:complexType>\n";
    if (node.content) printContent<Node, Content>(out, *node.content, depth + 2, descriptions);
    indent(out, depth + 1);
    out += "</xs:complexType>\n";
  }
  indent(out, depth);
  out += "</xs:element>\n";
}

template <class Node, class Content>
void printContent(std::string& out, const Content& content, int depth, const Descriptions& descriptions) {
  if (!content.simpleType.empty()) {
    indent(out, depth);
    out += "<xs:simpleContent>\n";
    indent(out, depth + 1);
    out += "<xs:extension base=\"" + qualified(content.simpleType) + "\">\n";
  } else if (!content.particles.empty()) {
    indent(out, depth);
    out += content.all ? "<xs:all>\n" : "<xs:sequence>\n";
    for (const auto& particle : content.particles)
      printElement<Node, Content>(out, *particle, depth + 1, descriptions);
    indent(out, depth);
    out += content.all ? "</xs:all>\n" : "</xs:sequence>\n";
  }
  const int attributeDepth = content.simpleType.empty() ? depth : depth + 2;
  for (const auto& attribute : content.attributes) {
    indent(out, attributeDepth);
    out += "<xs:attribute name=\"" + attribute.name + "\" type=\"" + qualified(attribute.type) + "\"";
    if (attribute.documentation.empty()) {
      out += "/>\n";
      continue;
    }
    out += ">\n";
    printAnnotation(out, attribute.documentation, attributeDepth + 1);
    indent(out, attributeDepth);
    out += "</xs:attribute>\n";
  }
  if (!content.simpleType.empty()) {
    indent(out, depth + 1);
    out += "</xs:extension>\n";
    indent(out, depth);
    out += "</xs:simpleContent>\n";
  }
}

}  // namespace

std::string RkXmlSchema::text() const {
  const std::string ns = RkXml::RkNamespaceUri;
  std::string out =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" xmlns:rk=\"" +
      ns + "\" targetNamespace=\"" + ns +
      "\" elementFormDefault=\"qualified\">\n"
      "  <xs:simpleType name=\"rkReal\">\n"
      "    <xs:union memberTypes=\"xs:double\">\n"
      "      <xs:simpleType>\n"
      "        <xs:restriction base=\"xs:string\">\n"
      "          <xs:enumeration value=\"nan\"/>\n"
      "          <xs:enumeration value=\"inf\"/>\n"
      "          <xs:enumeration value=\"-inf\"/>\n"
      "        </xs:restriction>\n"
      "      </xs:simpleType>\n"
      "    </xs:union>\n"
      "  </xs:simpleType>\n"
      "  <xs:simpleType name=\"rkRealList\">\n"
      "    <xs:list itemType=\"rk:rkReal\"/>\n"
      "  </xs:simpleType>\n"
      "  <xs:simpleType name=\"rkVector3\">\n"
      "    <xs:restriction base=\"rk:rkRealList\">\n"
      "      <xs:length value=\"3\"/>\n"
      "    </xs:restriction>\n"
      "  </xs:simpleType>\n"
      "  <xs:simpleType name=\"rkQuaternion\">\n"
      "    <xs:restriction base=\"rk:rkRealList\">\n"
      "      <xs:length value=\"4\"/>\n"
      "    </xs:restriction>\n"
      "  </xs:simpleType>\n";
  for (const auto& root : m_roots->particles) printElement<Node, Content>(out, *root, 1, m_classDescriptions);
  for (const auto& named : m_namedTypes) {
    out += "  <xs:complexType name=\"" + named.first + "\">\n";
    printAnnotation(out, describe(m_classDescriptions, named.first), 2);
    printContent<Node, Content>(out, *named.second, 2, m_classDescriptions);
    out += "  </xs:complexType>\n";
  }
  out += "</xs:schema>\n";
  return out;
}

std::string RkXmlSchema::writeString(const RkXmlObject& object) {
  RkXmlSchema schema;
  schema.addRoot(object);
  return schema.text();
}
