#include "xml/RkXmlVector.h"

#include "xml/RkXmlText.h"
#include "xml/RkXmlTokens.h"

void RkXmlVector::formatText(std::string& out) const {
  for (int i = 0; i < 3; ++i) {
    if (i) out += ' ';
    RkXmlText::format((*this)[i], out);
  }
}

RkBoolean RkXmlVector::parseText(std::string_view text) {
  RkReal values[3];
  if (!RkXmlText::parseReals(text, values, 3)) return false;
  *static_cast<RkVector*>(this) = RkVector(values[0], values[1], values[2]);
  return true;
}
