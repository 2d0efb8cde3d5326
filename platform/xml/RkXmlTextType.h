#pragma once
// An XML object whose whole content is one text value: a number, a name, a vector, an enumeration.
// Basic values among them also read one item of a group's data when the reader is in data mode.
#include <string>
#include <string_view>

#include "xml/RkXmlObject.h"

class RkXmlTextType : public RkXmlObject {
 public:
  virtual void formatText(std::string& out) const = 0;
  // Sets the value from text; false (value unchanged) when the text is not a valid value.
  virtual RkBoolean parseText(std::string_view text) = 0;
  // What a valid text is, for messages ("a real number").
  virtual const char* textDescription() const = 0;
  // The XML Schema simple type of the text.
  virtual const char* schemaTypeName() const = 0;

  RkBoolean read(RkXmlReader& reader) override;
  RkBoolean write(RkXmlWriter& writer) const override;
  void writeSchema(RkXmlSchema& schema) const override;
};
