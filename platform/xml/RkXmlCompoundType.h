#pragma once
// An XML object made of named fields. A class registers each field under its tag in registerComponents,
// which the framework calls lazily before the first read, write, schema or visit. Copies register anew,
// so derived classes keep the compiler's copy and assignment.
#include <string>
#include <vector>

#include "xml/RkXmlObject.h"

class RkXmlTextType;

class RkXmlCompoundType : public RkXmlObject {
 public:
  enum class ComponentKind { Element, ReadOnlyElement, Attribute };
  struct Component {
    RkToken tag;
    RkXmlObject* object;
    ComponentKind kind;
  };

  RkXmlCompoundType() : m_registered(false) {}
  RkXmlCompoundType(const RkXmlCompoundType& other) : RkXmlObject(other), m_registered(false) {}
  // Keeps this object's own registrations: they point at its own fields.
  RkXmlCompoundType& operator=(const RkXmlCompoundType& other) {
    RkXmlObject::operator=(other);
    return *this;
  }

  // Reads attributes, then child elements by tag in any order; an unknown child is skipped whole with one
  // level-4 line. False when a field could not be read.
  RkBoolean read(RkXmlReader& reader) override;
  RkBoolean write(RkXmlWriter& writer) const override;
  void writeSchema(RkXmlSchema& schema) const override;
  void accept(RkXmlObjectVisitor* visitor) const override;

  // The registered fields in registration order.
  const std::vector<Component>& components() const;
  // The name of the schema type of this class (its C++ class name).
  std::string schemaTypeName() const;

 protected:
  // Registers every field; derived classes register their base's fields first.
  virtual void registerComponents() {}
  void registerComponent(const RkToken& tag, RkXmlObject* field);
  // Written, but ignored when reading: the document cannot change it.
  void registerComponentReadOnly(const RkToken& tag, RkXmlObject* field);
  // Written as an attribute of this object's element.
  void registerAttributeComponent(const RkToken& tag, RkXmlTextType* field);

 private:
  mutable bool m_registered;
  mutable std::vector<Component> m_components;
};
