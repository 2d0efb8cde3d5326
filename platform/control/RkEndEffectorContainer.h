#pragma once
// Holds one end effector of any kind, read from XML by its tag:
//   <endEffectorContainer><frameEndEffector>...</frameEndEffector></endEffectorContainer>
#include "control/RkControlTokens.h"
#include "control/RkEndEffector.h"
#include "xml/RkXmlFamilyContainer.h"

class RkEndEffectorContainer : public RkXmlFamilyContainer<RkEndEffectorContainer, RkEndEffector,
                                                           RkControl::RkEndEffectorContainerToken> {
 protected:
  void registerComponentCreators() override;
};
