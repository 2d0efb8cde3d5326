#pragma once
// The XML vocabulary of the control part: one token per element name, in the toolkit namespace, built at
// load time before the other initialisers of the libraries that use them.
#include "xml/RkToken.h"

namespace RkControl {

// Names of the active control settings an action reports to the controller.
extern const RkToken RkActiveControlDescriptionToken;
extern const RkToken RkActiveControlMethodToken;
extern const RkToken RkActiveEndEffectorSetToken;

// Class names.
extern const RkToken RkEndEffectorPlacementToken;
extern const RkToken RkManipulatorEndEffectorPlacementToken;
extern const RkToken RkPointEndEffectorToken;
extern const RkToken RkFrameEndEffectorToken;
extern const RkToken RkEndEffectorContainerToken;
extern const RkToken RkEndEffectorSetToken;

// Member names.
extern const RkToken RkPlacementToken;
extern const RkToken RkOffsetTransformationsToken;
extern const RkToken RkLinkIdentifierToken;
extern const RkToken RkMaximumAccelerationToken;
extern const RkToken RkOrientationWeightLengthToken;
extern const RkToken RkEndEffectorsToken;

}  // namespace RkControl
