#include "sequencing/RkManipulationVocabulary.h"

#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationActionDirectory.h"
#include "sequencing/RkManipulationSequenceManager.h"

void RkManipulationVocabulary::addDocuments(RkXmlSchema& schema) {
  schema.addRoot(RkManipulationSequenceManager());
  schema.addRoot(RkManipulationSequenceManagerState());
  // Actions of every kind, as the action containers hold them.
  schema.addRoot(RkManipulationActionContainer());
  schema.addRoot(RkManipulationActionDirectory());
}
