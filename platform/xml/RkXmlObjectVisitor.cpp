#include "xml/RkXmlObjectVisitor.h"

#include <typeinfo>

#include "xml/RkXmlCompoundType.h"

void RkXmlObjectVisitor::start(const RkXmlObject& object) {
  m_currentToken = object.token();
  object.accept(this);
}

void RkXmlObjectVisitor::arrive(const RkXmlObject* object, const char* typeName) {
  m_currentObject = object;
  m_pathStrings.clear();
  m_pathStrings.push_back(typeName);
  m_pathStrings.push_back(m_currentToken.text());
}

void RkXmlObjectVisitor::visitObject(const RkXmlObject* object) {
  arrive(object, typeid(*object).name());
  mayEnter();
  closeObject(object);
}

void RkXmlObjectVisitor::visitCompound(const RkXmlCompoundType* compound) {
  arrive(compound, typeid(*compound).name());
  if (mayEnter() && shouldDescend(compound)) {
    for (const RkXmlCompoundType::Component& field : compound->components()) {
      m_currentToken = field.tag;
      field.in(*compound).accept(this);
    }
  }
  closeObject(compound);
}
