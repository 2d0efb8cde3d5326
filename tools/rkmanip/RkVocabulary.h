#pragma once
// The documents rkmanip knows: every class that can stand at the root of a file, by its tag.
#include <string>

#include "xml/RkXmlObject.h"

namespace RkVocabulary {
// A new object for a root tag, or null for a tag that no class of the vocabulary has.
RkXmlObject* newDocumentObject(const RkToken& rootTag);
// The XSD of every document of the vocabulary.
std::string schema();
}  // namespace RkVocabulary
