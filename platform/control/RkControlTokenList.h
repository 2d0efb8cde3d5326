// One line a token of this vocabulary: RK_TOKEN(name, "localName") for a name in the toolkit namespace,
// RK_PLAIN_TOKEN(name, "localName") for a plain one. Included twice, once to declare and once to define the
// tokens, so it has no include guard.

// Names of the active control settings an action reports to the controller.
RK_TOKEN(RkActiveControlDescriptionToken, "activeControlDescription")
RK_TOKEN(RkActiveControlMethodToken, "activeControlMethod")
RK_TOKEN(RkActiveEndEffectorSetToken, "activeEndEffectorSet")

// Class names.
RK_TOKEN(RkEndEffectorPlacementToken, "endEffectorPlacement")
RK_TOKEN(RkManipulatorEndEffectorPlacementToken, "manipulatorEndEffectorPlacement")
RK_TOKEN(RkPointEndEffectorToken, "pointEndEffector")
RK_TOKEN(RkFrameEndEffectorToken, "frameEndEffector")
RK_TOKEN(RkEndEffectorContainerToken, "endEffectorContainer")
RK_TOKEN(RkEndEffectorSetToken, "endEffectorSet")

// Member names.
RK_TOKEN(RkPlacementToken, "placement")
RK_TOKEN(RkOffsetTransformationsToken, "offsetTransformations")
RK_TOKEN(RkLinkIdentifierToken, "linkIdentifier")
RK_TOKEN(RkMaximumAccelerationToken, "maximumAcceleration")
RK_TOKEN(RkOrientationWeightLengthToken, "orientationWeightLength")
RK_TOKEN(RkEndEffectorsToken, "endEffectors")
