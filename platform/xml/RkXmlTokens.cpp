#include "xml/RkXmlTokens.h"

namespace RkXml {

const char* const RkNamespaceUri = "http://rkmanipulation.org/namespace/ct#";

RkToken qualifiedToken(const char* localName) {
  RkToken token(RkNamespaceUri);
  token += localName;
  return token;
}

// Built before the other initialisers of this library, which may name them.
__attribute__((init_priority(101))) const RkToken RkNamespaceToken(RkNamespaceUri);
__attribute__((init_priority(101))) const RkToken RkCountToken("count");
__attribute__((init_priority(101))) const RkToken RkElementToken = qualifiedToken("element");
__attribute__((init_priority(101))) const RkToken RkGroupToken = qualifiedToken("group");
__attribute__((init_priority(101))) const RkToken RkKeyToken = qualifiedToken("key");
__attribute__((init_priority(101))) const RkToken RkValueToken = qualifiedToken("value");
__attribute__((init_priority(101))) const RkToken RkVectorTypeToken = qualifiedToken("vector");
__attribute__((init_priority(101))) const RkToken RkMapTypeToken = qualifiedToken("map");
__attribute__((init_priority(101))) const RkToken RkAddLibrariesToken = qualifiedToken("addLibraries");
__attribute__((init_priority(101))) const RkToken RkVector3Token = qualifiedToken("vector3");
__attribute__((init_priority(101))) const RkToken RkOrientationTypeToken = qualifiedToken("orientation");

}  // namespace RkXml
