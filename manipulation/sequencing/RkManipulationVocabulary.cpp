#include "sequencing/RkManipulationVocabulary.h"

#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationActionDirectory.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "sequencing/RkPoseSet.h"

void RkManipulationVocabulary::addDocuments(RkXmlSchema& schema) {
  schema.addRoot(RkManipulationSequenceManager());
  schema.addRoot(RkManipulationSequenceManagerState());
  // Actions of every kind, as the action containers hold them.
  schema.addRoot(RkManipulationActionContainer());
  schema.addRoot(RkManipulationActionDirectory());
  // Named poses, kept apart from the tasks that use them.
  schema.addRoot(RkPoseSet());
}
