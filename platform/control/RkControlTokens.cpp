#include "control/RkControlTokens.h"

#include "xml/RkXmlTokens.h"

namespace RkControl {

__attribute__((init_priority(101))) const RkToken RkActiveControlDescriptionToken =
    RkXml::qualifiedToken("activeControlDescription");
__attribute__((init_priority(101))) const RkToken RkActiveControlMethodToken =
    RkXml::qualifiedToken("activeControlMethod");
__attribute__((init_priority(101))) const RkToken RkActiveEndEffectorSetToken =
    RkXml::qualifiedToken("activeEndEffectorSet");

__attribute__((init_priority(101))) const RkToken RkEndEffectorPlacementToken =
    RkXml::qualifiedToken("endEffectorPlacement");
__attribute__((init_priority(101))) const RkToken RkManipulatorEndEffectorPlacementToken =
    RkXml::qualifiedToken("manipulatorEndEffectorPlacement");
__attribute__((init_priority(101))) const RkToken RkPointEndEffectorToken =
    RkXml::qualifiedToken("pointEndEffector");
__attribute__((init_priority(101))) const RkToken RkFrameEndEffectorToken =
    RkXml::qualifiedToken("frameEndEffector");
__attribute__((init_priority(101))) const RkToken RkEndEffectorContainerToken =
    RkXml::qualifiedToken("endEffectorContainer");
__attribute__((init_priority(101))) const RkToken RkEndEffectorSetToken =
    RkXml::qualifiedToken("endEffectorSet");

__attribute__((init_priority(101))) const RkToken RkPlacementToken = RkXml::qualifiedToken("placement");
__attribute__((init_priority(101))) const RkToken RkOffsetTransformationsToken =
    RkXml::qualifiedToken("offsetTransformations");
__attribute__((init_priority(101))) const RkToken RkLinkIdentifierToken =
    RkXml::qualifiedToken("linkIdentifier");
__attribute__((init_priority(101))) const RkToken RkMaximumAccelerationToken =
    RkXml::qualifiedToken("maximumAcceleration");
__attribute__((init_priority(101))) const RkToken RkOrientationWeightLengthToken =
    RkXml::qualifiedToken("orientationWeightLength");
__attribute__((init_priority(101))) const RkToken RkEndEffectorsToken = RkXml::qualifiedToken("endEffectors");

}  // namespace RkControl
