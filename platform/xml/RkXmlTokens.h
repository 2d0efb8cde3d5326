#pragma once
// The framework's own vocabulary: container structure names and the toolkit namespace.
#include "xml/RkToken.h"

namespace RkXml {
// The toolkit's namespace URI; every element name of its documents lies in it.
extern const char* const RkNamespaceUri;
// Builds a qualified token: the namespace URI followed by the local name.
RkToken qualifiedToken(const char* localName);

extern const RkToken RkNamespaceToken;
extern const RkToken RkCountToken;  // unqualified: an attribute
extern const RkToken RkElementToken;
extern const RkToken RkGroupToken;
extern const RkToken RkKeyToken;
extern const RkToken RkValueToken;
extern const RkToken RkVectorTypeToken;
extern const RkToken RkMapTypeToken;
extern const RkToken RkAddLibrariesToken;
// The element names of the vector and orientation value types.
extern const RkToken RkVector3Token;
extern const RkToken RkOrientationTypeToken;
}  // namespace RkXml
