#pragma once
// The base of every object that reads and writes itself as one XML element.
// A parent opens the element, the object writes its attributes and content, the parent closes it; when
// reading, the reader stands on the object's start tag and the object leaves it on its end tag.
#include "foundation/RkTypes.h"
#include "xml/RkToken.h"

class RkXmlReader;
class RkXmlWriter;
class RkXmlSchema;
class RkXmlObjectVisitor;

class RkXmlObject {
 public:
  RkXmlObject() = default;
  RkXmlObject(const RkXmlObject&) = default;
  RkXmlObject& operator=(const RkXmlObject&) = default;
  RkXmlObject(RkXmlObject&&) noexcept = default;
  RkXmlObject& operator=(RkXmlObject&&) noexcept = default;
  virtual ~RkXmlObject() = default;

  virtual RkBoolean read(RkXmlReader& reader);
  virtual RkBoolean write(RkXmlWriter& writer) const;
  // Declares, into the element the schema has open, the content this object writes.
  virtual void writeSchema(RkXmlSchema& schema) const;
  // True when other is an object of the same class with equal fields.
  virtual RkBoolean equality(const RkXmlObject* other) const = 0;
  virtual RkXmlObject* newObject() const = 0;
  virtual RkXmlObject* clone() const = 0;
  virtual const RkToken& token() const = 0;
  virtual void accept(RkXmlObjectVisitor* visitor) const;
  // Basic values (numbers, names) can stand side by side in one group element.
  virtual RkBoolean isBasicType() const { return false; }

  // The base holds nothing, so all base parts are equal.
  bool operator==(const RkXmlObject&) const { return true; }
  bool operator!=(const RkXmlObject& other) const { return !(*this == other); }
};
