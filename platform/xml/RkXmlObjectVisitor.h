#pragma once
// Walks a tree of XML objects. For each object it records the object, its path strings (the C++ type and
// the tag it stands under) and asks mayEnter and shouldDescend before going into its children; closeObject
// is sent when an object's visit ends. Subclasses override those three to do their work.
#include <cstddef>
#include <string>
#include <vector>

#include "xml/RkToken.h"

class RkXmlObject;
class RkXmlCompoundType;
template <class T>
class RkXmlVectorType;
template <class K, class V>
class RkXmlMapType;
template <class T, std::size_t InlineBytes>
class RkXmlVariableElementType;

class RkXmlObjectVisitor {
 public:
  RkXmlObjectVisitor() : m_currentObject(nullptr) {}
  virtual ~RkXmlObjectVisitor() = default;

  // Visits object, named by its token, and everything it holds.
  void start(const RkXmlObject& object);

  // A plain object or basic value: recorded, offered to mayEnter, closed.
  virtual void visitObject(const RkXmlObject* object);
  // A compound: its fields are visited in registration order, each under its tag.
  virtual void visitCompound(const RkXmlCompoundType* compound);
  template <class T>
  void visit(const RkXmlVectorType<T>* vector);
  template <class K, class V>
  void visit(const RkXmlMapType<K, V>* map);
  template <class T, std::size_t InlineBytes>
  void visit(const RkXmlVariableElementType<T, InlineBytes>* container);

  const RkXmlObject* currentObject() const { return m_currentObject; }
  const std::vector<std::string>& pathStrings() const { return m_pathStrings; }
  const RkToken& currentToken() const { return m_currentToken; }
  void setCurrentToken(const RkToken& token) { m_currentToken = token; }

 protected:
  // Asked on arrival at every object; false skips its children.
  virtual bool mayEnter() const { return true; }
  // Asked before descending into the children of a container or compound.
  virtual bool shouldDescend(const RkXmlObject*) { return true; }
  // Sent when the visit of an object ends.
  virtual void closeObject(const RkXmlObject*) {}

 private:
  void arrive(const RkXmlObject* object, const char* typeName);

  // The container visits (in the container headers) set these directly.
  const RkXmlObject* m_currentObject;
  std::vector<std::string> m_pathStrings;
  RkToken m_currentToken;
};
