#pragma once
// The XML vocabulary of the library: one token per element name, in the toolkit namespace, built once at
// load time before any other initialiser of the library runs.
#include <string>

#include "sequencing/RkManipulationVersion.h"
#include "xml/RkToken.h"

namespace RkManipulation {

// The namespace token; every qualified token is its text followed by a local name.
extern const RkToken ns;

// Tokens naming classes and containers.
extern const RkToken RkActualPlacementManipulationOffsetToken;
extern const RkToken RkActualPlacementManipulationOffsetStateToken;
extern const RkToken RkBezierInterpolatorToken;
extern const RkToken RkConstantManipulationOffsetToken;
extern const RkToken RkConstantManipulationOffsetStateToken;
extern const RkToken RkFrameRelativeManipulationOffsetToken;
extern const RkToken RkFrameRelativeManipulationOffsetStateToken;
extern const RkToken RkInterpolatedManipulationOffsetToken;
extern const RkToken RkInterpolatedManipulationOffsetStateToken;
extern const RkToken RkLinkRelativeManipulationOffsetToken;
extern const RkToken RkLinkRelativeManipulationOffsetStateToken;
extern const RkToken RkManipulationActionContainerToken;
extern const RkToken RkManipulationActionDirectoryToken;
extern const RkToken RkManipulationActionStateContainerToken;
extern const RkToken RkManipulationFrameContainerToken;
extern const RkToken RkManipulationFrameStateContainerToken;
extern const RkToken RkManipulationFrameTransitionEventToken;
extern const RkToken RkManipulationFrameTransitionEventContainerToken;
extern const RkToken RkManipulationFrameTransitionEventStateToken;
extern const RkToken RkManipulationFrameTransitionEventStateContainerToken;
extern const RkToken RkManipulationOffsetToken;
extern const RkToken RkManipulationOffsetContainerToken;
extern const RkToken RkManipulationOffsetStateToken;
extern const RkToken RkManipulationOffsetStateContainerToken;
extern const RkToken RkManipulationPlacementAchievedTransitionEventToken;
extern const RkToken RkManipulationPlacementAchievedTransitionEventStateToken;
extern const RkToken RkManipulationSequenceToken;
extern const RkToken RkManipulationSequenceStateToken;
extern const RkToken RkManipulationSequenceManagerToken;
extern const RkToken RkManipulationSequenceManagerStateToken;
extern const RkToken RkManipulationTimeDurationTransitionEventToken;
extern const RkToken RkManipulationTimeDurationTransitionEventStateToken;
extern const RkToken RkManipulationWaypointToken;
extern const RkToken RkManipulationWaypointVectorToken;
extern const RkToken RkObjectRelativeManipulationOffsetToken;
extern const RkToken RkObjectRelativeManipulationOffsetStateToken;
extern const RkToken RkParametricManipulationFrameToken;
extern const RkToken RkParametricManipulationFrameStateToken;
extern const RkToken RkParametricTranslationManipulationOffsetToken;
extern const RkToken RkParametricTranslationManipulationOffsetStateToken;
extern const RkToken RkPoseSetToken;
extern const RkToken RkReferencePoseManipulationOffsetToken;
extern const RkToken RkReferencePoseManipulationOffsetStateToken;
extern const RkToken RkStandardManipulationFrameToken;
extern const RkToken RkStandardManipulationFrameStateToken;
extern const RkToken RkSubsequenceManipulationFrameToken;
extern const RkToken RkSubsequenceManipulationFrameStateToken;
extern const RkToken RkWaypointInterpolatorToken;
extern const RkToken RkWaypointInterpolatorContainerToken;
extern const RkToken RkWaypointSequenceToken;
extern const RkToken RkWaypointSequenceStateToken;

// Tokens naming members (child elements) of classes; some belong to the wider vocabulary only.
extern const RkToken RkAbsoluteAngleFlagToken;
extern const RkToken RkActionMapToken;
extern const RkToken RkActualOffsetToken;
extern const RkToken RkAngleValuesToken;
extern const RkToken RkAverageDistanceDataToken;
extern const RkToken RkBisectionManipulationContactLocatorToken;
extern const RkToken RkBreakPointToken;
extern const RkToken RkBreakPointTesterToken;
extern const RkToken RkComparisonShapeFeatureHistogramToken;
extern const RkToken RkConvergenceValueToken;
extern const RkToken RkConvergenceWindowToken;
extern const RkToken RkConvergenceWindowStartTimeToken;
extern const RkToken RkCurrentFrameIndexToken;
extern const RkToken RkCurrentFrameIsCompleteToken;
extern const RkToken RkCurrentFrameNeedsInitToken;
extern const RkToken RkCurrentSequenceIndexToken;
extern const RkToken RkCurrentSequenceIsCompleteToken;
extern const RkToken RkCurrentSequenceNeedsInitToken;
extern const RkToken RkCurrentSequenceStateContainerToken;
extern const RkToken RkCurrentWaypointIndexToken;
extern const RkToken RkCurrentWaypointIsCompleteToken;
extern const RkToken RkCurrentWaypointNeedsInitToken;
extern const RkToken RkDesiredPlacementToken;
extern const RkToken RkEndEffectorIndexToken;
extern const RkToken RkExtendedZoneRadiusToken;
extern const RkToken RkFrameIndexToken;
extern const RkToken RkIndexToken;
extern const RkToken RkInitializationTimeToken;
extern const RkToken RkInterpolatedCurrentOffsetToken;
extern const RkToken RkInterpolatedInitialOffsetToken;
extern const RkToken RkInterpolationTimeToken;
extern const RkToken RkIsNormalizedToken;
extern const RkToken RkJointPositionRangesToken;
extern const RkToken RkLinkFrameTypeToken;
extern const RkToken RkLinkIdentifiersToken;
extern const RkToken RkLinkLabelsToken;
extern const RkToken RkManipulationActiveControlDescriptionToken;
extern const RkToken RkManipulationActiveForceControlDescriptionToken;
extern const RkToken RkManipulationCurrentEndEffectorPlacementToken;
extern const RkToken RkManipulationForceToken;
extern const RkToken RkManipulationFrameContainerVectorToken;
extern const RkToken RkManipulationFrameStateContainerVectorToken;
extern const RkToken RkManipulationFrameXAxisSourceFrame;
extern const RkToken RkManipulationFrameXAxisVector;
extern const RkToken RkManipulationFrameYAxisSourceFrame;
extern const RkToken RkManipulationFrameYAxisVector;
extern const RkToken RkManipulationFrameZAxisSourceFrame;
extern const RkToken RkManipulationFrameZAxisVector;
extern const RkToken RkManipulationGoalEndEffectorPlacementToken;
extern const RkToken RkManipulationOffsetContainerVectorToken;
extern const RkToken RkManipulationOffsetStateContainerVectorToken;
extern const RkToken RkManipulationSequenceMapToken;
extern const RkToken RkMaxValueToken;
extern const RkToken RkNameToken;
extern const RkToken RkNumAngleBinsToken;
extern const RkToken RkNumDistanceBinsToken;
extern const RkToken RkNumPointsToken;
extern const RkToken RkParametricCurrentOffsetToken;
extern const RkToken RkParametricIndexToken;
extern const RkToken RkParametricTagToken;
extern const RkToken RkParametricTransformToken;
extern const RkToken RkParametricValuesToken;
extern const RkToken RkParametricXTagToken;
extern const RkToken RkParametricYTagToken;
extern const RkToken RkParametricZTagToken;
extern const RkToken RkPlacementConvergenceValueToken;
extern const RkToken RkPlacementConvergenceWindowToken;
extern const RkToken RkPlacementConvergenceWindowStartTimeToken;
extern const RkToken RkPlacementTestIndicesToken;
extern const RkToken RkPlacementToleranceToken;
extern const RkToken RkPoseMapToken;
extern const RkToken RkRelativeCurrentOffsetToken;
extern const RkToken RkRelativeOffsetToken;
extern const RkToken RkRelativeOffsetStateToken;
extern const RkToken RkScaleToken;
extern const RkToken RkSequenceMapToken;
extern const RkToken RkSequenceOrderToken;
extern const RkToken RkSizeToken;
extern const RkToken RkSoftFailureToken;
extern const RkToken RkStepSizeToken;
extern const RkToken RkStopPointToken;
extern const RkToken RkSubdirectoryMapToken;
extern const RkToken RkSubsequenceStateContainerToken;
extern const RkToken RkTagToken;
extern const RkToken RkTargetFrameToken;
extern const RkToken RkTargetFrameStateToken;
extern const RkToken RkTargetOffsetToken;
extern const RkToken RkTargetOffsetStateToken;
extern const RkToken RkTestIndicesToken;
extern const RkToken RkTimeDurationToken;
extern const RkToken RkTimeoutPeriodToken;
extern const RkToken RkTimeoutStartTimeToken;
extern const RkToken RkToleranceToken;
extern const RkToken RkTriggerTimeToken;
extern const RkToken RkUseIndexToken;
extern const RkToken RkZoneRadiusToken;

// Unqualified frame-type names: the value strings of the offsets' frame-type settings.
extern const RkToken RkDhFrameToken;
extern const RkToken RkObjectFrameToken;
extern const RkToken RkPrimaryFrameToken;
extern const RkToken RkSystemFrameToken;
extern const RkToken RkUndefinedFrameToken;

}  // namespace RkManipulation
