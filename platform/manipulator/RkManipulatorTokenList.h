// One line a token of this vocabulary: RK_TOKEN(name, "localName") for a name in the toolkit namespace,
// RK_PLAIN_TOKEN(name, "localName") for a plain one. Included twice, once to declare and once to define the
// tokens, so it has no include guard.

// Class names.
RK_TOKEN(RkPositionStateToken, "positionState")
RK_TOKEN(RkManipulatorLinkToken, "manipulatorLink")
RK_TOKEN(RkIndividualManipulatorToken, "individualManipulator")

// Member names.
RK_TOKEN(RkBasePlacementToken, "basePlacement")
RK_TOKEN(RkJointPositionsToken, "jointPositions")
RK_TOKEN(RkJointVelocitiesToken, "jointVelocities")
RK_TOKEN(RkNameToken, "name")
RK_TOKEN(RkLinksToken, "links")
RK_TOKEN(RkIdentifierToken, "identifier")
RK_TOKEN(RkParentIndexToken, "parentIndex")
RK_TOKEN(RkFixedTransformationToken, "fixedTransformation")
RK_TOKEN(RkJointTypeToken, "jointType")
RK_TOKEN(RkJointAxisToken, "jointAxis")
RK_TOKEN(RkDhOffsetToken, "dhOffset")

// Unqualified joint-type names: the value strings of a link's joint-type setting.
RK_PLAIN_TOKEN(RkRevoluteToken, "revolute")
RK_PLAIN_TOKEN(RkPrismaticToken, "prismatic")
