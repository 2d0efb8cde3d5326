#include "control/RkEndEffectorContainer.h"

#include "control/RkControlTokens.h"
#include "control/RkFrameEndEffector.h"
#include "control/RkPointEndEffector.h"

RkBoolean RkEndEffectorContainer::equality(const RkXmlObject* other) const {
  const auto* same = dynamic_cast<const RkEndEffectorContainer*>(other);
  return same && *this == *same;
}

const RkToken& RkEndEffectorContainer::classToken() {
  return RkControl::RkEndEffectorContainerToken;
}

void RkEndEffectorContainer::registerComponentCreators() {
  registerComponentCreator(RkPointEndEffector::classToken(), &RkPointEndEffector::creator);
  registerComponentCreator(RkFrameEndEffector::classToken(), &RkFrameEndEffector::creator);
}
