#include "xml/RkXmlCompoundType.h"

#include "xml/RkXmlObjectVisitor.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlTextType.h"
#include "xml/RkXmlWriter.h"

namespace {
// The list being built on this thread and the prototype its offsets are taken from.
thread_local RkXmlCompoundType::ComponentList* t_building = nullptr;
thread_local const RkXmlCompoundType* t_prototype = nullptr;
}  // namespace

RkXmlCompoundType::ComponentList RkXmlCompoundType::buildComponents(RkXmlCompoundType& prototype) {
  ComponentList list;
  ComponentList* outerList = t_building;
  const RkXmlCompoundType* outerPrototype = t_prototype;
  t_building = &list;
  t_prototype = &prototype;
  prototype.registerComponents();
  t_building = outerList;
  t_prototype = outerPrototype;
  return list;
}

void RkXmlCompoundType::addComponent(const RkToken& tag, const RkXmlObject* field, ComponentKind kind,
                                     bool (*equal)(const RkXmlObject&, const RkXmlObject&),
                                     const char* description) {
  // Only the framework's one call per class registers; a class calling it itself registers nothing.
  if (!t_building || t_prototype != this) return;
  const std::ptrdiff_t offset = reinterpret_cast<const char*>(field) -
                                reinterpret_cast<const char*>(static_cast<const RkXmlCompoundType*>(this));
  t_building->push_back({tag, offset, kind, equal, description});
}

bool RkXmlCompoundType::operator==(const RkXmlCompoundType& other) const {
  const ComponentList& fields = components();
  if (&fields != &other.components()) return false;
  for (const Component& field : fields) {
    if (!field.equal(field.in(*this), field.in(other))) return false;
  }
  return true;
}

RkBoolean RkXmlCompoundType::read(RkXmlReader& reader) {
  if (!RkXmlObject::read(reader)) return false;
  const ComponentList& fields = components();
  RkBoolean result = true;
  for (RkU32 i = 0, count = reader.attributeCount(); i < count; ++i) {
    for (const Component& field : fields) {
      // Attributes are unqualified: they match by local name.
      if (field.kind == ComponentKind::Attribute &&
          field.tag.localName() == reader.attributeName(i).localName()) {
        RkXmlTextType& text = static_cast<RkXmlTextType&>(field.in(*this));
        if (!text.parseText(reader.attributeValue(i))) {
          reader.contentError("attribute %s=\"%s\" is not %s", field.tag.c_str(),
                              reader.attributeValue(i).c_str(), text.textDescription());
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
      result = found->in(*this).read(reader) && result;
    }
    reader.finishElement(childDepth);
  }
  return result && !reader.failed();
}

RkBoolean RkXmlCompoundType::write(RkXmlWriter& writer) const {
  const ComponentList& fields = components();
  for (const Component& field : fields) {
    if (field.kind != ComponentKind::Attribute) continue;
    std::string& text = writer.scratch();
    text.clear();
    static_cast<const RkXmlTextType&>(field.in(*this)).formatText(text);
    writer.attribute(field.tag, text);
  }
  RkBoolean result = true;
  for (const Component& field : fields) {
    if (field.kind == ComponentKind::Attribute) continue;
    writer.openElement(field.tag);
    result = field.in(*this).write(writer) && result;
    writer.closeElement();
  }
  return result;
}

std::string RkXmlCompoundType::schemaTypeName() const {
  return RkXmlSchema::className(*this);
}

void RkXmlCompoundType::writeSchema(RkXmlSchema& schema) const {
  schema.noteClass(*this);
  if (!schema.beginNamedType(schemaTypeName())) return;
  schema.useAllGroup();
  for (const Component& field : components()) {
    if (field.kind == ComponentKind::Attribute) {
      schema.attribute(field.tag, static_cast<const RkXmlTextType&>(field.in(*this)).schemaTypeName(),
                       field.description);
    } else {
      schema.openElement(field.tag, RkXmlOccurrence::Optional, field.description);
      field.in(*this).writeSchema(schema);
      schema.closeElement();
    }
  }
  schema.endNamedType();
}

void RkXmlCompoundType::accept(RkXmlObjectVisitor* visitor) const {
  visitor->visitCompound(this);
}
