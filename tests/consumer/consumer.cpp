// Writes and reads back a transformation through the installed headers and libraries.
#include <cstdio>
#include <string>

#include "common/RkCoordinateSystemTransformation.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

int main() {
  const RkCoordinateSystemTransformation placement(RkVector(0.4, 0.0, 0.3), RkOrientation());
  std::string document;
  RkXmlWriter::writeString(placement, document);
  RkCoordinateSystemTransformation read;
  const bool ok = RkXmlReader::readString(document, read) && read == placement;
  std::printf("%s%s\n", document.c_str(), ok ? "round trip ok" : "round trip FAILED");
  return ok && RkManipulationVersionString == "3.0.0" ? 0 : 1;
}
