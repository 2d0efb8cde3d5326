#include "tools/rkmanip/RkVocabulary.h"

#include "control/RkEndEffectorSet.h"
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkPositionState.h"
#include "sequencing/RkManipulationVocabulary.h"
#include "simulation/RkSimulatedEndEffectorSets.h"
#include "tools/rkmanip/RkClassDescriptions.h"
#include "xml/RkXmlSchema.h"

namespace RkVocabulary {
namespace {

// Tasks and their states first, then robot descriptions and set-ups; every class any of them can hold
// may also stand alone in a file.
const RkXmlSchema& vocabulary() {
  static const RkXmlSchema* const schema = [] {
    auto* built = new RkXmlSchema;
    RkManipulationVocabulary::addDocuments(*built);
    built->addRoot(RkSimulatedEndEffectorSets());
    built->addRoot(RkEndEffectorSet());
    built->addRoot(RkIndividualManipulator());
    built->addRoot(RkPositionState());
    built->addEveryClassAsRoot();
    built->setClassDescriptions(RkClassDescriptions::byClassName());
    return built;
  }();
  return *schema;
}

}  // namespace

RkXmlObject* newDocumentObject(const RkToken& rootTag) {
  for (const auto& prototype : vocabulary().classes()) {
    if (prototype->token() == rootTag) return prototype->newObject();
  }
  return nullptr;
}

std::string schema() {
  return vocabulary().text();
}

}  // namespace RkVocabulary
