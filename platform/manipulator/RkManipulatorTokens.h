#pragma once
// The XML vocabulary of the manipulator part: one token per element name, in the toolkit namespace, built at
// load time before the other initialisers of the libraries that use them.
#include "xml/RkToken.h"

namespace RkManipulator {

// Class names.
extern const RkToken RkPositionStateToken;
extern const RkToken RkManipulatorLinkToken;
extern const RkToken RkIndividualManipulatorToken;

// Member names.
extern const RkToken RkBasePlacementToken;
extern const RkToken RkJointPositionsToken;
extern const RkToken RkJointVelocitiesToken;
extern const RkToken RkNameToken;
extern const RkToken RkLinksToken;
extern const RkToken RkIdentifierToken;
extern const RkToken RkParentIndexToken;
extern const RkToken RkFixedTransformationToken;
extern const RkToken RkJointTypeToken;
extern const RkToken RkJointAxisToken;
extern const RkToken RkDhOffsetToken;

// Unqualified joint-type names: the value strings of a link's joint-type setting.
extern const RkToken RkRevoluteToken;
extern const RkToken RkPrismaticToken;

}  // namespace RkManipulator
