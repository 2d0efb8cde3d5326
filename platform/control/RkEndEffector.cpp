#include "control/RkEndEffector.h"

#include "control/RkControlTokens.h"

void RkEndEffector::registerComponents() {
  registerComponent(RkControl::RkLinkIdentifierToken, &m_linkIdentifier);
  registerComponent(RkControl::RkMaximumAccelerationToken, &m_maximumAcceleration);
}
