#pragma once
// The documents of the library: a task (the sequence manager), its run state and an action of any kind. Every
// class either can hold is found from them through the creators registered in the family containers, so a new
// class needs no other list.
#include "xml/RkXmlSchema.h"

namespace RkManipulationVocabulary {
// Declares the library's documents in schema; schema.classes() then lists every class they can hold.
void addDocuments(RkXmlSchema& schema);
}  // namespace RkManipulationVocabulary
