#include "manipulator/RkManipulatorTokens.h"

#include "xml/RkXmlTokens.h"

namespace RkManipulator {

__attribute__((init_priority(101))) const RkToken RkPositionStateToken =
    RkXml::qualifiedToken("positionState");
__attribute__((init_priority(101))) const RkToken RkManipulatorLinkToken =
    RkXml::qualifiedToken("manipulatorLink");
__attribute__((init_priority(101))) const RkToken RkIndividualManipulatorToken =
    RkXml::qualifiedToken("individualManipulator");

__attribute__((init_priority(101))) const RkToken RkBasePlacementToken =
    RkXml::qualifiedToken("basePlacement");
__attribute__((init_priority(101))) const RkToken RkJointPositionsToken =
    RkXml::qualifiedToken("jointPositions");
__attribute__((init_priority(101))) const RkToken RkJointVelocitiesToken =
    RkXml::qualifiedToken("jointVelocities");
__attribute__((init_priority(101))) const RkToken RkNameToken = RkXml::qualifiedToken("name");
__attribute__((init_priority(101))) const RkToken RkLinksToken = RkXml::qualifiedToken("links");
__attribute__((init_priority(101))) const RkToken RkIdentifierToken = RkXml::qualifiedToken("identifier");
__attribute__((init_priority(101))) const RkToken RkParentIndexToken = RkXml::qualifiedToken("parentIndex");
__attribute__((init_priority(101))) const RkToken RkFixedTransformationToken =
    RkXml::qualifiedToken("fixedTransformation");
__attribute__((init_priority(101))) const RkToken RkJointTypeToken = RkXml::qualifiedToken("jointType");
__attribute__((init_priority(101))) const RkToken RkJointAxisToken = RkXml::qualifiedToken("jointAxis");
__attribute__((init_priority(101))) const RkToken RkDhOffsetToken = RkXml::qualifiedToken("dhOffset");

__attribute__((init_priority(101))) const RkToken RkRevoluteToken("revolute");
__attribute__((init_priority(101))) const RkToken RkPrismaticToken("prismatic");

}  // namespace RkManipulator
