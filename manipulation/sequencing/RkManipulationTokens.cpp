#include "sequencing/RkManipulationTokens.h"

#include "xml/RkXmlTokens.h"

namespace RkManipulation {
namespace {

// Copies the namespace token and appends the local name.
RkToken makeToken(const char* localName) {
  RkToken token(ns);
  token += localName;
  return token;
}

}  // namespace

// Every token of the library is built in this one unit, the namespace token first; init_priority puts them
// before the library's other initialisers (static null objects, version strings).
#define RK_TOKEN __attribute__((init_priority(101))) const RkToken

RK_TOKEN ns(RkXml::RkNamespaceUri);

RK_TOKEN RkActualPlacementManipulationOffsetToken = makeToken("actualPlacementManipulationOffset");
RK_TOKEN RkActualPlacementManipulationOffsetStateToken = makeToken("actualPlacementManipulationOffsetState");
RK_TOKEN RkBezierInterpolatorToken = makeToken("bezierInterpolator");
RK_TOKEN RkConstantManipulationOffsetToken = makeToken("constantManipulationOffset");
RK_TOKEN RkConstantManipulationOffsetStateToken = makeToken("constantManipulationOffsetState");
RK_TOKEN RkFrameRelativeManipulationOffsetToken = makeToken("frameRelativeManipulationOffset");
RK_TOKEN RkFrameRelativeManipulationOffsetStateToken = makeToken("frameRelativeManipulationOffsetState");
RK_TOKEN RkInterpolatedManipulationOffsetToken = makeToken("interpolatedManipulationOffset");
RK_TOKEN RkInterpolatedManipulationOffsetStateToken = makeToken("interpolatedManipulationOffsetState");
RK_TOKEN RkLinkRelativeManipulationOffsetToken = makeToken("linkRelativeManipulationOffset");
RK_TOKEN RkLinkRelativeManipulationOffsetStateToken = makeToken("linkRelativeManipulationOffsetState");
RK_TOKEN RkManipulationActionContainerToken = makeToken("manipulationActionContainer");
RK_TOKEN RkManipulationActionDirectoryToken = makeToken("manipulationActionDirectory");
RK_TOKEN RkManipulationActionStateContainerToken = makeToken("manipulationActionStateContainer");
RK_TOKEN RkManipulationFrameContainerToken = makeToken("manipulationFrameContainer");
RK_TOKEN RkManipulationFrameStateContainerToken = makeToken("manipulationFrameStateContainer");
RK_TOKEN RkManipulationFrameTransitionEventToken = makeToken("manipulationFrameTransitionEvent");
RK_TOKEN RkManipulationFrameTransitionEventContainerToken =
    makeToken("manipulationFrameTransitionEventContainer");
RK_TOKEN RkManipulationFrameTransitionEventStateToken = makeToken("manipulationFrameTransitionEventState");
RK_TOKEN RkManipulationFrameTransitionEventStateContainerToken =
    makeToken("manipulationFrameTransitionEventStateContainer");
RK_TOKEN RkManipulationOffsetToken = makeToken("manipulationOffset");
RK_TOKEN RkManipulationOffsetContainerToken = makeToken("manipulationOffsetContainer");
RK_TOKEN RkManipulationOffsetStateToken = makeToken("manipulationOffsetState");
RK_TOKEN RkManipulationOffsetStateContainerToken = makeToken("manipulationOffsetStateContainer");
RK_TOKEN RkManipulationPlacementAchievedTransitionEventToken = makeToken("placementAchievedTransitionEvent");
RK_TOKEN RkManipulationPlacementAchievedTransitionEventStateToken =
    makeToken("placementAchievedTransitionEventState");
RK_TOKEN RkManipulationSequenceToken = makeToken("manipulationSequence");
RK_TOKEN RkManipulationSequenceStateToken = makeToken("manipulationSequenceState");
RK_TOKEN RkManipulationSequenceManagerToken = makeToken("manipulationSequenceManager");
RK_TOKEN RkManipulationSequenceManagerStateToken = makeToken("manipulationSequenceManagerState");
RK_TOKEN RkManipulationTimeDurationTransitionEventToken = makeToken("timeDurationTransitionEvent");
RK_TOKEN RkManipulationTimeDurationTransitionEventStateToken = makeToken("timeDurationTransitionEventState");
RK_TOKEN RkManipulationWaypointToken = makeToken("manipulationWaypoint");
RK_TOKEN RkManipulationWaypointVectorToken = makeToken("manipulationWaypointVector");
RK_TOKEN RkObjectRelativeManipulationOffsetToken = makeToken("objectRelativeManipulationOffset");
RK_TOKEN RkObjectRelativeManipulationOffsetStateToken = makeToken("objectRelativeManipulationOffsetState");
RK_TOKEN RkParametricManipulationFrameToken = makeToken("parametricManipulationFrame");
RK_TOKEN RkParametricManipulationFrameStateToken = makeToken("parametricManipulationFrameState");
RK_TOKEN RkParametricTranslationManipulationOffsetToken =
    makeToken("parametricTranslationManipulationOffset");
RK_TOKEN RkParametricTranslationManipulationOffsetStateToken =
    makeToken("parametricTranslationManipulationOffsetState");
RK_TOKEN RkPoseSetToken = makeToken("poseSet");
RK_TOKEN RkReferencePoseManipulationOffsetToken = makeToken("referencePoseManipulationOffset");
RK_TOKEN RkReferencePoseManipulationOffsetStateToken = makeToken("referencePoseManipulationOffset");
RK_TOKEN RkStandardManipulationFrameToken = makeToken("standardManipulationFrame");
RK_TOKEN RkStandardManipulationFrameStateToken = makeToken("standardManipulationFrameState");
RK_TOKEN RkSubsequenceManipulationFrameToken = makeToken("subsequenceManipulationFrame");
RK_TOKEN RkSubsequenceManipulationFrameStateToken = makeToken("subsequenceManipulationFrameState");
RK_TOKEN RkWaypointInterpolatorToken = makeToken("waypointInterpolator");
RK_TOKEN RkWaypointInterpolatorContainerToken = makeToken("waypointInterpolatorContainer");
RK_TOKEN RkWaypointSequenceToken = makeToken("waypointSequence");
RK_TOKEN RkWaypointSequenceStateToken = makeToken("waypointSequenceState");
RK_TOKEN RkAbsoluteAngleFlagToken = makeToken("absoluteAngleFlag");
RK_TOKEN RkActionMapToken = makeToken("actionMap");
RK_TOKEN RkActualOffsetToken = makeToken("actualOffset");
RK_TOKEN RkAngleValuesToken = makeToken("angleValues");
RK_TOKEN RkAverageDistanceDataToken = makeToken("averageDistanceData");
RK_TOKEN RkBisectionManipulationContactLocatorToken = makeToken("bisectionManipulationContactLocator");
RK_TOKEN RkBreakPointToken = makeToken("breakPoint");
RK_TOKEN RkBreakPointTesterToken = makeToken("breakPointTester");
RK_TOKEN RkComparisonShapeFeatureHistogramToken = makeToken("comparisonShapeFeatureHistogram");
RK_TOKEN RkConvergenceValueToken = makeToken("convergenceValue");
RK_TOKEN RkConvergenceWindowToken = makeToken("convergenceWindow");
RK_TOKEN RkConvergenceWindowStartTimeToken = makeToken("convergenceWindowStartTime");
RK_TOKEN RkCurrentFrameIndexToken = makeToken("currentFrameIndex");
RK_TOKEN RkCurrentFrameIsCompleteToken = makeToken("currentFrameIsComplete");
RK_TOKEN RkCurrentFrameNeedsInitToken = makeToken("currentFrameNeedsInit");
RK_TOKEN RkCurrentSequenceIndexToken = makeToken("currentSequenceIndex");
RK_TOKEN RkCurrentSequenceIsCompleteToken = makeToken("currentSequenceIsComplete");
RK_TOKEN RkCurrentSequenceNeedsInitToken = makeToken("currentSequenceNeedsInit");
RK_TOKEN RkCurrentSequenceStateContainerToken = makeToken("currentSequenceStateContainer");
RK_TOKEN RkCurrentWaypointIndexToken = makeToken("currentWaypointIndex");
RK_TOKEN RkCurrentWaypointIsCompleteToken = makeToken("currentWaypointIsComplete");
RK_TOKEN RkCurrentWaypointNeedsInitToken = makeToken("currentWaypointNeedsInit");
RK_TOKEN RkDesiredPlacementToken = makeToken("desiredPlacement");
RK_TOKEN RkEndEffectorIndexToken = makeToken("endEffectorIndex");
RK_TOKEN RkExtendedZoneRadiusToken = makeToken("extendedZoneRadius");
RK_TOKEN RkFrameIndexToken = makeToken("frameIndex");
RK_TOKEN RkIndexToken = makeToken("index");
RK_TOKEN RkInitializationTimeToken = makeToken("initializationTime");
RK_TOKEN RkInterpolatedCurrentOffsetToken = makeToken("interpolatedCurrentOffset");
RK_TOKEN RkInterpolatedInitialOffsetToken = makeToken("interpolatedInitialOffset");
RK_TOKEN RkInterpolationTimeToken = makeToken("interpolationTime");
RK_TOKEN RkIsNormalizedToken = makeToken("isNormalized");
RK_TOKEN RkJointPositionRangesToken = makeToken("jointPositionRanges");
RK_TOKEN RkLinkFrameTypeToken = makeToken("linkFrameType");
RK_TOKEN RkLinkIdentifiersToken = makeToken("linkIdentifiers");
RK_TOKEN RkLinkLabelsToken = makeToken("linkLabels");
RK_TOKEN RkManipulationActiveControlDescriptionToken = makeToken("manipulationActiveControlDescription");
RK_TOKEN RkManipulationActiveForceControlDescriptionToken =
    makeToken("manipulationActiveForceControlDescription");
RK_TOKEN RkManipulationCurrentEndEffectorPlacementToken =
    makeToken("manipulationCurrentEndEffectorPlacement");
RK_TOKEN RkManipulationForceToken = makeToken("manipulationForce");
RK_TOKEN RkManipulationFrameContainerVectorToken = makeToken("manipulationFrameVector");
RK_TOKEN RkManipulationFrameStateContainerVectorToken = makeToken("manipulationFrameStateVector");
RK_TOKEN RkManipulationFrameXAxisSourceFrame = makeToken("manipulationFrameXAxisSourceFrame");
RK_TOKEN RkManipulationFrameXAxisVector = makeToken("manipulationFrameXAxisVector");
RK_TOKEN RkManipulationFrameYAxisSourceFrame = makeToken("manipulationFrameYAxisSourceFrame");
RK_TOKEN RkManipulationFrameYAxisVector = makeToken("manipulationFrameYAxisVector");
RK_TOKEN RkManipulationFrameZAxisSourceFrame = makeToken("manipulationFrameZAxisSourceFrame");
RK_TOKEN RkManipulationFrameZAxisVector = makeToken("manipulationFrameZAxisVector");
RK_TOKEN RkManipulationGoalEndEffectorPlacementToken = makeToken("manipulationGoalEndEffectorPlacement");
RK_TOKEN RkManipulationOffsetContainerVectorToken = makeToken("manipulationOffsetContainerVector");
RK_TOKEN RkManipulationOffsetStateContainerVectorToken = makeToken("manipulationOffsetStateContainerVector");
RK_TOKEN RkManipulationSequenceMapToken = makeToken("manipulationSequenceMap");
RK_TOKEN RkMaxValueToken = makeToken("maxValue");
RK_TOKEN RkNameToken = makeToken("name");
RK_TOKEN RkNumAngleBinsToken = makeToken("numAngleBins");
RK_TOKEN RkNumDistanceBinsToken = makeToken("numDistanceBins");
RK_TOKEN RkNumPointsToken = makeToken("numPoints");
RK_TOKEN RkParametricCurrentOffsetToken = makeToken("parametricCurrentOffset");
RK_TOKEN RkParametricIndexToken = makeToken("parametricIndex");
RK_TOKEN RkParametricTagToken = makeToken("parametricTag");
RK_TOKEN RkParametricTransformToken = makeToken("parametricTransform");
RK_TOKEN RkParametricValuesToken = makeToken("parametricValues");
RK_TOKEN RkParametricXTagToken = makeToken("parametricXTag");
RK_TOKEN RkParametricYTagToken = makeToken("parametricYTag");
RK_TOKEN RkParametricZTagToken = makeToken("parametricZTag");
RK_TOKEN RkPlacementConvergenceValueToken = makeToken("placementConvergenceValue");
RK_TOKEN RkPlacementConvergenceWindowToken = makeToken("placementConvergenceWindow");
RK_TOKEN RkPlacementConvergenceWindowStartTimeToken = makeToken("placementConvergenceWindowStartTime");
RK_TOKEN RkPlacementTestIndicesToken = makeToken("placementTestIndices");
RK_TOKEN RkPlacementToleranceToken = makeToken("placementTolerance");
RK_TOKEN RkPoseMapToken = makeToken("poseMap");
RK_TOKEN RkRelativeCurrentOffsetToken = makeToken("relativeCurrentOffset");
RK_TOKEN RkRelativeOffsetToken = makeToken("relativeOffset");
RK_TOKEN RkRelativeOffsetStateToken = makeToken("relativeOffsetState");
RK_TOKEN RkScaleToken = makeToken("scale");
RK_TOKEN RkSequenceMapToken = makeToken("sequenceMap");
RK_TOKEN RkSequenceOrderToken = makeToken("sequenceOrder");
RK_TOKEN RkSizeToken = makeToken("size");
RK_TOKEN RkSoftFailureToken = makeToken("softFailure");
RK_TOKEN RkStepSizeToken = makeToken("stepSize");
RK_TOKEN RkStopPointToken = makeToken("stopPoint");
RK_TOKEN RkSubdirectoryMapToken = makeToken("subdirectoryMap");
RK_TOKEN RkSubsequenceStateContainerToken = makeToken("subsequenceStateContainer");
RK_TOKEN RkTagToken = makeToken("tag");
RK_TOKEN RkTargetFrameToken = makeToken("targetFrame");
RK_TOKEN RkTargetFrameStateToken = makeToken("targetFrameState");
RK_TOKEN RkTargetOffsetToken = makeToken("targetOffset");
RK_TOKEN RkTargetOffsetStateToken = makeToken("targetOffsetState");
RK_TOKEN RkTestIndicesToken = makeToken("testIndices");
RK_TOKEN RkTimeDurationToken = makeToken("timeDuration");
RK_TOKEN RkTimeoutPeriodToken = makeToken("timeoutPeriod");
RK_TOKEN RkTimeoutStartTimeToken = makeToken("timeoutStartTime");
RK_TOKEN RkToleranceToken = makeToken("tolerance");
RK_TOKEN RkTriggerTimeToken = makeToken("triggerTime");
RK_TOKEN RkUseIndexToken = makeToken("useIndex");
RK_TOKEN RkZoneRadiusToken = makeToken("zoneRadius");

RK_TOKEN RkDhFrameToken("dhFrame");
RK_TOKEN RkObjectFrameToken("objectFrame");
RK_TOKEN RkPrimaryFrameToken("primaryFrame");
RK_TOKEN RkSystemFrameToken("systemFrame");
RK_TOKEN RkUndefinedFrameToken("undefinedFrame");

#undef RK_TOKEN

}  // namespace RkManipulation
