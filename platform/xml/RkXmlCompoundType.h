#pragma once
// An XML object made of named fields. A class names each field once, in registerComponents; the framework
// calls it once per class, on a fresh object, and keeps where each field lies, so every object of the class
// shares one field list and reading, writing or comparing never changes the object it is given.
#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include "xml/RkXmlObject.h"
#include "xml/RkXmlTextType.h"

class RkXmlCompoundType : public RkXmlObject {
 public:
  enum class ComponentKind { Element, ReadOnlyElement, Attribute };
  // One field of a class: its tag, where it lies from the compound's start, how two of it compare, and
  // what it is in a line, with its unit (the schema's documentation; may be null).
  struct Component {
    RkToken tag;
    std::ptrdiff_t offset;
    ComponentKind kind;
    bool (*equal)(const RkXmlObject& a, const RkXmlObject& b);
    const char* description;

    RkXmlObject& in(RkXmlCompoundType& owner) const {
      return *reinterpret_cast<RkXmlObject*>(reinterpret_cast<char*>(&owner) + offset);
    }
    const RkXmlObject& in(const RkXmlCompoundType& owner) const {
      return *reinterpret_cast<const RkXmlObject*>(reinterpret_cast<const char*>(&owner) + offset);
    }
  };
  typedef std::vector<Component> ComponentList;

  // Reads attributes, then child elements by tag in any order; an unknown child is skipped whole with one
  // level-4 line. False when a field could not be read.
  RkBoolean read(RkXmlReader& reader) override;
  RkBoolean write(RkXmlWriter& writer) const override;
  void writeSchema(RkXmlSchema& schema) const override;
  void accept(RkXmlObjectVisitor* visitor) const override;

  // The registered fields of this object's class, base fields first, in registration order.
  virtual const ComponentList& components() const = 0;
  // The name of the schema type of this class (its C++ class name).
  std::string schemaTypeName() const;

  // Same class, and every registered field equal, in order, stopping at the first difference.
  bool operator==(const RkXmlCompoundType& other) const;
  bool operator!=(const RkXmlCompoundType& other) const { return !(*this == other); }

  // The field list of prototype's class: calls its registerComponents once. For the class-pattern helpers.
  static ComponentList buildComponents(RkXmlCompoundType& prototype);

 protected:
  // Registers every field; derived classes register their base's fields first. A field's description says
  // in a line what it is, with its unit where it has one ("how long the frame lasts, s").
  virtual void registerComponents() {}
  template <class Field>
  void registerComponent(const RkToken& tag, Field* field, const char* description = nullptr) {
    addComponent(tag, field, ComponentKind::Element, &equalFields<Field>, description);
  }
  // Written, but ignored when reading: the document cannot change it.
  template <class Field>
  void registerComponentReadOnly(const RkToken& tag, Field* field, const char* description = nullptr) {
    addComponent(tag, field, ComponentKind::ReadOnlyElement, &equalFields<Field>, description);
  }
  // Written as an attribute of this object's element.
  template <class Field>
  void registerAttributeComponent(const RkToken& tag, Field* field, const char* description = nullptr) {
    static_assert(std::is_base_of<RkXmlTextType, Field>::value, "an attribute holds one text value");
    addComponent(tag, field, ComponentKind::Attribute, &equalFields<Field>, description);
  }

 private:
  template <class Field>
  static bool equalFields(const RkXmlObject& a, const RkXmlObject& b) {
    return static_cast<const Field&>(a) == static_cast<const Field&>(b);
  }
  void addComponent(const RkToken& tag, const RkXmlObject* field, ComponentKind kind,
                    bool (*equal)(const RkXmlObject&, const RkXmlObject&), const char* description);
};
