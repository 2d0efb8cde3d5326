#include "control/RkEndEffectorContainer.h"

#include "control/RkControlTokens.h"
#include "control/RkFrameEndEffector.h"
#include "control/RkPointEndEffector.h"

void RkEndEffectorContainer::registerComponentCreators() {
  registerComponentCreator(RkPointEndEffector::classToken(), &RkPointEndEffector::creator);
  registerComponentCreator(RkFrameEndEffector::classToken(), &RkFrameEndEffector::creator);
}
