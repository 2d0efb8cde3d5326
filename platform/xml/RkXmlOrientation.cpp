#include "xml/RkXmlOrientation.h"

#include <cmath>

#include "xml/RkXmlText.h"
#include "xml/RkXmlTokens.h"

void RkXmlOrientation::formatText(std::string& out) const {
  const RkReal values[4] = {w(), x(), y(), z()};
  for (int i = 0; i < 4; ++i) {
    if (i) out += ' ';
    RkXmlText::format(values[i], out);
  }
}

RkBoolean RkXmlOrientation::parseText(std::string_view text) {
  RkReal v[4];
  if (!RkXmlText::parseReals(text, v, 4)) return false;
  const RkReal length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2] + v[3] * v[3]);
  if (!(length > 0.0) || !std::isfinite(length)) return false;
  *static_cast<RkOrientation*>(this) = RkOrientation(v[0], v[1], v[2], v[3]);
  return true;
}
