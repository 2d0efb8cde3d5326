#include "tools/rkmanip/RkVocabulary.h"

#include <utility>
#include <vector>

#include "control/RkEndEffectorSet.h"
#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "frames/RkStandardManipulationFrame.h"
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkPositionState.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "simulation/RkSimulatedEndEffectorSets.h"
#include "xml/RkXmlSchema.h"

namespace RkVocabulary {
namespace {

typedef RkXmlObject* (*Creator)();

template <class T>
RkXmlObject* make() {
  return new T;
}

// The usual top-level documents first: tasks, then their states, then the pieces a task is built from.
const std::vector<Creator>& documentCreators() {
  static const std::vector<Creator> creators = {
      &make<RkManipulationSequenceManager>,
      &make<RkManipulationSequenceManagerState>,
      &make<RkManipulationSequence>,
      &make<RkManipulationSequenceState>,
      &make<RkManipulationActionContainer>,
      &make<RkManipulationActionStateContainer>,
      &make<RkStandardManipulationFrame>,
      &make<RkStandardManipulationFrameState>,
      &make<RkConstantManipulationOffset>,
      &make<RkConstantManipulationOffsetState>,
      &make<RkManipulationTimeDurationTransitionEvent>,
      &make<RkManipulationTimeDurationTransitionEventState>,
      &make<RkEndEffectorSet>,
      &make<RkIndividualManipulator>,
      &make<RkPositionState>,
      &make<RkSimulatedEndEffectorSets>,
  };
  return creators;
}

}  // namespace

RkXmlObject* newDocumentObject(const RkToken& rootTag) {
  for (Creator creator : documentCreators()) {
    RkXmlObject* object = creator();
    if (object->token() == rootTag) return object;
    delete object;
  }
  return nullptr;
}

std::string schema() {
  RkXmlSchema schema;
  for (Creator creator : documentCreators()) {
    RkXmlObject* object = creator();
    schema.addRoot(*object);
    delete object;
  }
  return schema.text();
}

}  // namespace RkVocabulary
