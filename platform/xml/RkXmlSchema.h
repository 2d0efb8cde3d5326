#pragma once
// Builds an XML Schema (XSD) of the documents that objects write. Each object's writeSchema declares its
// content into the element the schema has open; compound classes become named types, which also ends
// recursion (a sequence holding frames holding sequences).
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "xml/RkToken.h"

class RkXmlObject;

// How often a declared element may occur: 0 or 1, exactly 1, or any number.
enum class RkXmlOccurrence { Optional = 0, Once = 1, Many = 2 };

class RkXmlSchema {
 public:
  RkXmlSchema();
  ~RkXmlSchema();
  RkXmlSchema(const RkXmlSchema&) = delete;
  RkXmlSchema& operator=(const RkXmlSchema&) = delete;

  // Declares a top-level element for object (named by its token) and every type it needs; a tag already
  // declared at the top is kept as it is.
  void addRoot(const RkXmlObject& object);
  // Declares a top-level element for every class met so far, so any of them may stand alone in a file.
  void addEveryClassAsRoot();
  // The XSD document.
  std::string text() const;
  // The XSD of the documents whose root is object.
  static std::string writeString(const RkXmlObject& object);

  // What each class is, in a line, by class name: the documentation of its type and of every element of
  // that type that has no description of its own.
  void setClassDescriptions(std::map<std::string, std::string> descriptions);
  // The name of object's class as a schema type name (its C++ name, other characters made '_').
  static std::string className(const RkXmlObject& object);

  // Declares a child element of the content being declared; its own content follows until closeElement.
  // The description, if any, becomes the element's documentation.
  void openElement(const RkToken& tag, RkXmlOccurrence occurrence, const char* description = nullptr);
  void closeElement();
  // The open element holds text of a simple type ("xs:string", "rkReal", ...).
  void textContent(const std::string& simpleType);
  // The open element holds one of these strings.
  void textEnumeration(const std::vector<std::string>& values);
  // The open element (or named type) has an unqualified attribute.
  void attribute(const RkToken& name, const std::string& simpleType, const char* description = nullptr);
  // The open element's children may come in any order (each at most once).
  void useAllGroup();
  // Children declared until closeChoice are alternatives.
  void openChoice(RkXmlOccurrence occurrence);
  void closeChoice();
  // Gives the open element the named complex type. True when the type is new: its content must be declared
  // now, closed by endNamedType; false when it exists already (nothing more to declare).
  bool beginNamedType(const std::string& name);
  void endNamedType();

  // Records the class of object (a compound or a polymorphic container) the first time it is met, so that a
  // schema also lists every class its roots can hold: the classes their containers' creators make.
  void noteClass(const RkXmlObject& object);
  // One fresh default object of each class met, in the order met.
  const std::vector<std::unique_ptr<RkXmlObject>>& classes() const { return m_classes; }

 private:
  struct Node;
  struct Content;
  struct Context;
  Content& currentContent();
  Node& addParticle(const std::string& name, RkXmlOccurrence occurrence, bool choice);

  std::unique_ptr<Content> m_roots;
  std::vector<std::pair<std::string, std::unique_ptr<Content>>> m_namedTypes;
  std::set<std::string> m_typeNames;
  std::vector<Context> m_contexts;
  std::set<std::string> m_classNames;
  std::set<RkToken> m_rootTags;
  std::vector<std::unique_ptr<RkXmlObject>> m_classes;
  std::map<std::string, std::string> m_classDescriptions;
};
