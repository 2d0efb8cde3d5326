#include "offsets/RkFrameRelativeManipulationOffset.h"

#include "control/RkEndEffectorSet.h"
#include "foundation/RkPrint.h"
#include "frames/RkStandardManipulationFrameState.h"
#include "offsets/RkManipulationOffsetContainer.h"
#include "sequencing/RkManipulationSequence.h"

RkManipulationStatus::Enum RkFrameRelativeManipulationOffset::update(
    RkReal, const RkManipulationUpdateParams&, const RkManipulationSequence&,
    const RkManipulationSequenceState&, RkU32, RkU32, RkManipulationOffsetState& state) const {
  // Only a state of this kind is accepted (std::bad_cast otherwise).
  static_cast<void>(dynamic_cast<State&>(state));
  return RkManipulationStatus::Complete;
}

std::string RkFrameRelativeManipulationOffset::validManipulationFrame() const {
  if (objectFrameAsManipulationFrame() || systemFrameAsManipulationFrame()) return "";
  return "must use strict system frame or object frame";
}

RkBoolean RkFrameRelativeManipulationOffset::calculatePrimaryFrame(
    const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex,
    const RkManipulationOffsetState&, RkCoordinateSystemTransformation& primaryFrame) const {
  const RkU32 reference = m_frameIndex;
  if (reference >= frameIndex) {
    Rk::Print::write(4, "RkFrameRelativeManipulationOffset::calculatePrimaryFrame invalid frame index.");
    return false;
  }
  const RkXmlVectorType<RkManipulationFrameContainer>& frames = sequence.manipulationFrameContainerVector();
  const RkManipulationFrame* frame = frameIndex < frames.size() ? frames[frameIndex].element() : nullptr;
  if (!frame) return false;
  const RkManipulationFrameState* currentState = sequenceState.currentFrameState();
  const RkStandardManipulationFrameState noState;
  const RkEndEffector* endEffector =
      frame->endEffectorSet(params, currentState ? *currentState : noState).endEffector(endEffectorIndex);
  if (!endEffector) return false;
  const std::string& link = endEffector->linkIdentifier();

  const RkXmlVectorType<RkManipulationFrameStateContainer>& frameStates =
      sequenceState.manipulationFrameStateContainerVector();
  if (reference >= frames.size() || reference >= frameStates.size()) {
    Rk::Print::write(
        4, "RkFrameRelativeManipulationOffset::calculatePrimaryFrame invalid reference frame index.");
    return false;
  }
  const RkManipulationFrame* referenceFrame = frames[reference].element();
  const RkManipulationFrameState* referenceState = frameStates[reference].element();
  if (!referenceFrame || !referenceState) return false;

  // The first end effector on the same link, from index 0 up.
  const RkEndEffectorSet& referenceSet = referenceFrame->endEffectorSet(params, *referenceState);
  RkU32 k = 0;
  for (; k < referenceSet.size(); ++k) {
    const RkEndEffector* candidate = referenceSet.endEffector(k);
    if (candidate && candidate->linkIdentifier() == link) break;
  }
  if (k == referenceSet.size()) {
    Rk::Print::write(
        4,
        "RkFrameRelativeManipulationOffset::calculatePrimaryFrame unable to find matching link (%s) "
        "in reference frame.",
        link.c_str());
    return false;
  }

  const RkXmlVectorType<RkManipulationOffsetContainer>& offsets =
      referenceFrame->offsetContainerVector(*referenceState);
  const RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStates =
      referenceState->offsetStateContainerVector();
  if (k >= offsets.size() || k >= offsetStates.size()) {
    Rk::Print::write(4,
                     "RkFrameRelativeManipulationOffset::calculatePrimaryFrame invalid manipulation offset "
                     "container vector index.");
    return false;
  }
  const RkManipulationOffset* referenceOffset = offsets[k].element();
  if (!referenceOffset) {
    Rk::Print::write(
        4,
        "RkFrameRelativeManipulationOffset::calculatePrimaryFrame the reference manipulation offset "
        "is not available.");
    return false;
  }
  const RkManipulationOffsetState* referenceOffsetState = offsetStates[k].element();
  if (!referenceOffsetState) {
    Rk::Print::write(
        4,
        "RkFrameRelativeManipulationOffset::calculatePrimaryFrame the reference manipulation offset "
        "state is not available.");
    return false;
  }
  primaryFrame = referenceOffset->goalOffsetTransformation(*referenceOffsetState).placement();
  return true;
}

RkBoolean RkFrameRelativeManipulationOffset::primaryFrame(
    const Context& context, const RkManipulationOffsetState& state,
    RkCoordinateSystemTransformation& primaryFrame) const {
  return calculatePrimaryFrame(context.params, context.sequence, context.sequenceState, context.frameIndex,
                               context.endEffectorIndex, state, primaryFrame);
}

RkBoolean RkFrameRelativeManipulationOffset::start(RkReal, const Context& context, State& state) const {
  return storeGoal(context, state);
}

void RkFrameRelativeManipulationOffset::reportInvalidManipulationFrame(const std::string& problem) const {
  Rk::Print::write(4, "RkFrameRelativeManipulationOffset::init manipulation frame is not valid (%s).\n",
                   problem.c_str());
}

RkBoolean RkFrameRelativeManipulationOffset::systemFrameAxes() const {
  return manipulationFrameXAxisSourceFrame() == SystemFrame ||
         manipulationFrameYAxisSourceFrame() == SystemFrame ||
         manipulationFrameZAxisSourceFrame() == SystemFrame;
}

RkEndEffectorPlacement RkFrameRelativeManipulationOffset::goalFromPrimaryFrame(
    const RkCoordinateSystemTransformation& primaryFrame) const {
  if (!systemFrameAxes()) return RkRelativeManipulationOffset::goalFromPrimaryFrame(primaryFrame);
  return RkEndEffectorPlacement(relativeOffset() * primaryFrame);
}

RkCoordinateSystemTransformation RkFrameRelativeManipulationOffset::relativeOffsetFor(
    const RkCoordinateSystemTransformation& goal,
    const RkCoordinateSystemTransformation& primaryFrame) const {
  if (!systemFrameAxes()) return RkRelativeManipulationOffset::relativeOffsetFor(goal, primaryFrame);
  return goal * primaryFrame.inverse();
}
