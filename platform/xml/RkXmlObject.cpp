#include "xml/RkXmlObject.h"

#include "xml/RkXmlObjectVisitor.h"
#include "xml/RkXmlReader.h"

RkBoolean RkXmlObject::read(RkXmlReader& reader) {
  const RkXmlNodeKind kind = reader.nodeKind();
  return kind == RkXmlNodeKind::StartElement || kind == RkXmlNodeKind::EmptyElement;
}

RkBoolean RkXmlObject::write(RkXmlWriter&) const {
  return true;
}

void RkXmlObject::writeSchema(RkXmlSchema&) const {}

void RkXmlObject::accept(RkXmlObjectVisitor* visitor) const {
  visitor->visitObject(this);
}
