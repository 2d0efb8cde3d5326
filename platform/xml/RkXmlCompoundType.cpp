#include "xml/RkXmlCompoundType.h"

#include <cxxabi.h>

#include <cstdlib>
#include <typeinfo>

#include "xml/RkXmlObjectVisitor.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlTextType.h"
#include "xml/RkXmlWriter.h"

const std::vector<RkXmlCompoundType::Component>& RkXmlCompoundType::components() const {
  if (!m_registered) {
    m_registered = true;
    m_components.clear();
    const_cast<RkXmlCompoundType*>(this)->registerComponents();
  }
  return m_components;
}

void RkXmlCompoundType::registerComponent(const RkToken& tag, RkXmlObject* field) {
  m_components.push_back({tag, field, ComponentKind::Element});
}

void RkXmlCompoundType::registerComponentReadOnly(const RkToken& tag, RkXmlObject* field) {
  m_components.push_back({tag, field, ComponentKind::ReadOnlyElement});
}

void RkXmlCompoundType::registerAttributeComponent(const RkToken& tag, RkXmlTextType* field) {
  m_components.push_back({tag, field, ComponentKind::Attribute});
}

RkBoolean RkXmlCompoundType::read(RkXmlReader& reader) {
  if (!RkXmlObject::read(reader)) return false;
  const std::vector<Component>& fields = components();
  RkBoolean result = true;
  for (RkU32 i = 0, count = reader.attributeCount(); i < count; ++i) {
    for (const Component& field : fields) {
      // Attributes are unqualified: they match by local name.
      if (field.kind == ComponentKind::Attribute &&
          field.tag.localName() == reader.attributeName(i).localName()) {
        RkXmlTextType* text = static_cast<RkXmlTextType*>(field.object);
        if (!text->parseText(reader.attributeValue(i))) {
          reader.contentError("attribute %s=\"%s\" is not %s", field.tag.c_str(),
                              reader.attributeValue(i).c_str(), text->textDescription());
          result = false;
        }
      }
    }
  }
  if (reader.nodeKind() == RkXmlNodeKind::EmptyElement) return result;
  const int childDepth = reader.depth() + 1;
  while (true) {
    const RkXmlNodeKind kind = reader.advance();
    if (kind == RkXmlNodeKind::Text) continue;
    if (kind != RkXmlNodeKind::StartElement && kind != RkXmlNodeKind::EmptyElement) break;
    const RkToken& tag = reader.tag();
    const Component* found = nullptr;
    for (const Component& field : fields) {
      if (field.tag == tag && field.kind != ComponentKind::Attribute) {
        found = &field;
        break;
      }
    }
    if (!found) {
      reader.contentError("unknown element \"%s\" in \"%s\" skipped", std::string(tag.localName()).c_str(),
                          std::string(token().localName()).c_str());
    } else if (found->kind == ComponentKind::Element) {
      result = found->object->read(reader) && result;
    }
    reader.finishElement(childDepth);
  }
  return result && !reader.failed();
}

RkBoolean RkXmlCompoundType::write(RkXmlWriter& writer) const {
  const std::vector<Component>& fields = components();
  for (const Component& field : fields) {
    if (field.kind != ComponentKind::Attribute) continue;
    std::string& text = writer.scratch();
    text.clear();
    static_cast<const RkXmlTextType*>(field.object)->formatText(text);
    writer.attribute(field.tag, text);
  }
  RkBoolean result = true;
  for (const Component& field : fields) {
    if (field.kind == ComponentKind::Attribute) continue;
    writer.openElement(field.tag);
    result = field.object->write(writer) && result;
    writer.closeElement();
  }
  return result;
}

std::string RkXmlCompoundType::schemaTypeName() const {
  const char* mangled = typeid(*this).name();
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

void RkXmlCompoundType::writeSchema(RkXmlSchema& schema) const {
  if (!schema.beginNamedType(schemaTypeName())) return;
  schema.useAllGroup();
  for (const Component& field : components()) {
    if (field.kind == ComponentKind::Attribute) {
      schema.attribute(field.tag, static_cast<const RkXmlTextType*>(field.object)->schemaTypeName());
    } else {
      schema.openElement(field.tag, RkXmlOccurrence::Optional);
      field.object->writeSchema(schema);
      schema.closeElement();
    }
  }
  schema.endNamedType();
}

void RkXmlCompoundType::accept(RkXmlObjectVisitor* visitor) const {
  visitor->visitCompound(this);
}
