#include "control/RkEndEffector.h"

#include "control/RkControlTokens.h"

void RkEndEffector::registerComponents() {
  registerComponent(RkControl::RkLinkIdentifierToken, &m_linkIdentifier, "the link the end effector is on");
  registerComponent(RkControl::RkMaximumAccelerationToken, &m_maximumAcceleration,
                    "the end effector's largest acceleration, m/s2");
}
