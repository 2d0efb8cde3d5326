#include "xml/RkXmlTextType.h"

#include "xml/RkXmlReader.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlWriter.h"

RkBoolean RkXmlTextType::read(RkXmlReader& reader) {
  if (reader.inDataMode()) {
    const std::string_view item = reader.nextDataItem();
    if (parseText(item)) return true;
    reader.contentError("\"%.*s\" is not %s", static_cast<int>(std::min<std::size_t>(item.size(), 80)),
                        item.data(), textDescription());
    return false;
  }
  if (!RkXmlObject::read(reader)) return false;
  thread_local std::string text;
  if (!reader.readElementText(text)) return false;
  if (parseText(text)) return true;
  reader.contentError("\"%.*s\" is not %s", static_cast<int>(std::min<std::size_t>(text.size(), 80)),
                      text.data(), textDescription());
  return false;
}

RkBoolean RkXmlTextType::write(RkXmlWriter& writer) const {
  std::string& text = writer.scratch();
  text.clear();
  formatText(text);
  writer.dataItem(text);
  return true;
}

void RkXmlTextType::writeSchema(RkXmlSchema& schema) const {
  schema.textContent(schemaTypeName());
}
